#include <maya/MQtUtil.h>

#include "ui/application.h"

#include <QtCore/QByteArray>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLayout>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QWidget>

#include <vector>

namespace {

// A Maya UI name is a short name or a path "window|layout|control"; the last piece is the
// object's own name, the others name objects above it, nearest last.
QStringList pathOf(const MString& name)
{
    return MQtUtil::toQString(name).split(QLatin1Char('|'), Qt::SkipEmptyParts);
}

// Appends the layouts of `layout`'s tree that hold `child`, innermost first.
bool appendHoldingLayouts(QLayout* layout, const QWidget* child, std::vector<const QLayout*>& chain)
{
    if (layout->indexOf(child) >= 0) {
        chain.push_back(layout);
        return true;
    }
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        QLayout* inner = item ? item->layout() : nullptr;
        if (inner && appendHoldingLayouts(inner, child, chain)) {
            chain.push_back(layout);
            return true;
        }
    }
    return false;
}

// True when the path's pieces before the last name objects above `target`, in order.
// Unnamed or unlisted objects in between are skipped, so a Maya path still matches when
// Qt puts extra widgets (a scroll area's viewport, say) between its elements.
bool pathLeadsTo(const QObject* target, const QStringList& path)
{
    qsizetype next = path.size() - 2;
    auto consume = [&](const QObject* object) {
        if (next >= 0 && object->objectName() == path[next])
            --next;
    };
    const QObject* below = target;
    for (const QObject* above = target->parent(); above && next >= 0; below = above, above = above->parent()) {
        // In Maya a layout sits between a widget and the controls it arranges; in Qt the
        // layout is beside the widget, so its name is taken just before the widget's.
        if (above->isWidgetType() && below->isWidgetType()) {
            QLayout* layout = static_cast<const QWidget*>(above)->layout();
            std::vector<const QLayout*> chain;
            if (layout && appendHoldingLayouts(layout, static_cast<const QWidget*>(below), chain))
                for (const QLayout* holding : chain)
                    consume(holding);
        }
        consume(above);
    }
    return next < 0;
}

void appendDescendants(const QObject* object, std::vector<QWidget*>& widgets)
{
    for (QObject* child : object->children()) {
        if (child->isWidgetType()) {
            widgets.push_back(static_cast<QWidget*>(child));
            appendDescendants(child, widgets);
        }
    }
}

// The widgets below `scope`, or every widget when there is none; parents before children.
std::vector<QWidget*> widgetsUnder(const QWidget* scope)
{
    std::vector<QWidget*> widgets;
    if (scope) {
        appendDescendants(scope, widgets);
        return widgets;
    }
    for (QWidget* window : QApplication::topLevelWidgets()) {
        // Windows with a parent are reached through that parent.
        if (window->parent())
            continue;
        widgets.push_back(window);
        appendDescendants(window, widgets);
    }
    return widgets;
}

// The layout in `layout`'s tree named by the path, if any.
const QLayout* layoutNamed(QLayout* layout, const QStringList& path)
{
    if (!layout)
        return nullptr;
    if (layout->objectName() == path.last() && pathLeadsTo(layout, path))
        return layout;
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (const QLayout* found = layoutNamed(item ? item->layout() : nullptr, path))
            return found;
    }
    return nullptr;
}

QPointer<QMainWindow>& hostMainWindow()
{
    static QPointer<QMainWindow> window;
    return window;
}

void deleteMainWindow()
{
    delete hostMainWindow().data();
}

} // namespace

QWidget* MQtUtil::findControl(const MString& controlName, const QWidget* parent)
{
    host::ensureApplication();
    const QStringList path = pathOf(controlName);
    if (path.isEmpty())
        return nullptr;
    for (QWidget* widget : widgetsUnder(parent))
        if (widget->objectName() == path.last() && pathLeadsTo(widget, path))
            return widget;
    return nullptr;
}

QWidget* MQtUtil::findLayout(const MString& layoutName, const QWidget* parent)
{
    host::ensureApplication();
    const QStringList path = pathOf(layoutName);
    if (path.isEmpty())
        return nullptr;
    // The parent's own layout counts: in Maya it is a child of the parent window.
    std::vector<QWidget*> widgets = widgetsUnder(parent);
    if (parent)
        widgets.insert(widgets.begin(), const_cast<QWidget*>(parent));
    for (QWidget* widget : widgets) {
        if (widget != parent && widget->layout() && widget->objectName() == path.last()
            && pathLeadsTo(widget, path))
            return widget;
        if (layoutNamed(widget->layout(), path))
            return widget;
    }
    return nullptr;
}

QWidget* MQtUtil::findWindow(const MString& windowName)
{
    host::ensureApplication();
    const QStringList path = pathOf(windowName);
    if (path.isEmpty())
        return nullptr;
    for (QWidget* widget : widgetsUnder(nullptr))
        if (widget->isWindow() && widget->objectName() == path.last() && pathLeadsTo(widget, path))
            return widget;
    return nullptr;
}

QWidget* MQtUtil::mainWindow()
{
    host::ensureApplication();
    QPointer<QMainWindow>& window = hostMainWindow();
    if (!window) {
        window = new QMainWindow;
        window->setObjectName(QStringLiteral("MayaWindow"));
        // The application may belong to the program, which can end it; the window goes
        // with it rather than outliving it unowned.
        qRemovePostRoutine(deleteMainWindow);
        qAddPostRoutine(deleteMainWindow);
    }
    return window.data();
}

QString MQtUtil::toQString(const MString& mayaString)
{
    host::ensureApplication();
    return QString::fromUtf8(mayaString.asChar(), static_cast<qsizetype>(mayaString.length()));
}

MString MQtUtil::toMString(const QString& qtString)
{
    host::ensureApplication();
    const QByteArray utf8 = qtString.toUtf8();
    return MString(utf8.constData(), static_cast<int>(utf8.size()));
}
