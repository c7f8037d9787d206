#pragma once
// MQtUtil: reaches the application's Qt widgets by their object names.

#include <maya/MString.h>

#include <QtCore/QString>

class QWidget;
class QObject;

class MQtUtil {
public:
    static QWidget* findControl(const MString& controlName, const QWidget* parent = nullptr);
    static QWidget* findLayout(const MString& layoutName, const QWidget* parent = nullptr);
    static QWidget* findWindow(const MString& windowName);
    static QWidget* mainWindow();
    static QString toQString(const MString& mayaString);
    static MString toMString(const QString& qtString);
};
