// The UI commands of the language: windows, layouts and controls made as real Qt widgets
// named as the script names them, so MQtUtil::findControl finds them as it finds Maya's.
// Changing a control by hand (a click, a drag, a typed value) runs its command; setting it
// from a script (-e -v) does not, as in Maya.

#include "command/builtinArgs.h"
#include "command/interpreter.h"
#include "tool/toolRegistry.h"
#include "ui/application.h"

#include "host/log.h"
#include "host/widgets.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFrame>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QWidget>

#include <climits>
#include <cstdlib>
#include <functional>
#include <map>
#include <vector>

namespace host {
namespace {

QString qText(const std::string& text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }
std::string stdText(const QString& text) { return text.toUtf8().toStdString(); }

// The property names under which a control keeps its commands.
constexpr const char* kCommand = "melCommand";             // -command
constexpr const char* kChangeCommand = "melChangeCommand"; // -changeCommand
constexpr const char* kOnCommand = "melOnCommand";         // -onCommand
constexpr const char* kOffCommand = "melOffCommand";       // -offCommand
constexpr const char* kDragCommand = "melDragCommand";     // -dragCommand
constexpr const char* kKind = "melKind";                   // the command that made it

struct UiState {
    std::vector<QPointer<QWidget>> windows; // made by `window`, oldest first
    QPointer<QWidget> parent;               // where new controls go
    QPointer<QWidget> lastWindow;
    std::map<std::string, int> counters;    // default names
    int running = 0;                        // control commands running
    std::vector<QPointer<QWidget>> doomed;  // deleted once no control command runs
    bool cleanupRegistered = false;
};

UiState& ui()
{
    static UiState state;
    return state;
}

void deleteWindows()
{
    for (QPointer<QWidget>& w : ui().windows)
        delete w.data();
    ui().windows.clear();
}

// Every widget made here, the windows first.
std::vector<QWidget*> allControls()
{
    std::vector<QWidget*> out;
    for (const QPointer<QWidget>& w : ui().windows) {
        if (!w)
            continue;
        out.push_back(w);
        for (QWidget* child : w->findChildren<QWidget*>())
            if (child->property(kKind).isValid())
                out.push_back(child);
    }
    return out;
}

// A control by its name or its path ("window|layout|name": the last piece names it).
QWidget* findUi(const std::string& name)
{
    std::string leaf = name.substr(name.rfind('|') == std::string::npos ? 0 : name.rfind('|') + 1);
    if (leaf.empty())
        return nullptr;
    const QString wanted = qText(leaf);
    for (QWidget* w : allControls()) {
        if (w->objectName() != wanted)
            continue;
        bool dying = false;
        for (const QPointer<QWidget>& d : ui().doomed)
            dying = dying || (d && (d == w || d->isAncestorOf(w)));
        if (!dying)
            return w;
    }
    return nullptr;
}

std::string uniqueName(const std::string& stem)
{
    int& n = ui().counters[stem];
    std::string name;
    do
        name = stem + std::to_string(++n);
    while (findUi(name));
    return name;
}

// The full path of a control, as Maya's UI commands return it.
std::string pathOf(QWidget* w)
{
    std::string path = stdText(w->objectName());
    for (QWidget* p = w->parentWidget(); p; p = p->parentWidget())
        if (p->property(kKind).isValid())
            path = stdText(p->objectName()) + "|" + path;
    return path;
}

// Widgets that deleteUI took away while a control's command ran go once no command runs:
// a control's signal is still being sent when its command deletes it.
void deleteDoomed()
{
    if (ui().running > 0 || ui().doomed.empty())
        return;
    ui().doomed.clear();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void runCommandText(const QVariant& command)
{
    const std::string text = stdText(command.toString());
    if (text.empty())
        return;
    ++ui().running;
    interpret(text, true, false);
    --ui().running;
}

void runChange(QWidget* control, bool on, bool toggles)
{
    QPointer<QWidget> guard(control);
    runCommandText(control->property(kChangeCommand));
    if (toggles && guard)
        runCommandText(control->property(on ? kOnCommand : kOffCommand));
}

// ---- arguments ----------------------------------------------------------------------

struct UiFlag {
    const char* shortName;
    const char* longName;
    int count; // arguments in create and edit mode
};

struct UiArgs {
    bool query = false, edit = false;
    std::map<std::string, std::vector<ArgValue>> flags; // by long name
    std::vector<std::string> names;

    bool has(const char* name) const { return flags.count(name) > 0; }
    std::string text(const char* name, unsigned k = 0) const
    {
        auto it = flags.find(name);
        return it == flags.end() || it->second.size() <= k ? std::string() : it->second[k].text;
    }
    double number(const char* name, double fallback, unsigned k = 0) const
    {
        double d = fallback;
        auto it = flags.find(name);
        if (it != flags.end() && it->second.size() > k)
            parseNumber(it->second[k].text, d);
        return d;
    }
    bool boolean(const char* name, bool fallback) const
    {
        bool b = fallback;
        auto it = flags.find(name);
        if (it != flags.end() && !it->second.empty())
            parseBool(it->second[0].text, b);
        return b;
    }
};

const std::vector<UiFlag> kCommonFlags = {
    {"q", "query", 0},        {"e", "edit", 0},          {"ex", "exists", 0},       {"l", "label", 1},
    {"ann", "annotation", 1}, {"w", "width", 1},         {"h", "height", 1},        {"en", "enable", 1},
    {"vis", "visible", 1},    {"p", "parent", 1},        {"c", "command", 1},       {"cc", "changeCommand", 1},
    {"onc", "onCommand", 1},  {"ofc", "offCommand", 1},  {"dc", "dragCommand", 1},  {"v", "value", 1},
    {"min", "minValue", 1},   {"max", "maxValue", 1},    {"s", "step", 1},          {"pre", "precision", 1},
    {"t", "title", 1},        {"wh", "widthHeight", 2},  {"adj", "adjustableColumn", 1},
    {"rs", "rowSpacing", 1},  {"cs", "columnSpacing", 1}, {"nc", "numberOfColumns", 1},
    {"cll", "collapsable", 1}, {"cl", "collapse", 1},    {"mh", "marginHeight", 1}, {"mw", "marginWidth", 1},
    {"i", "image", 1},        {"i1", "image1", 1},       {"st", "style", 1},        {"al", "align", 1},
    {"rtf", "resizeToFitChildren", 1}, {"s2", "sizeable", 1}, {"wnd", "window", 0}, {"ctl", "control", 0},
    {"lay", "layout", 0},     {"f", "field", 1},         {"fmn", "fieldMinValue", 1}, {"fmx", "fieldMaxValue", 1},
    {"ec", "enterCommand", 1}, {"tc", "toolContext", 0},
};

MStatus parseUi(const CommandCall& call, const std::vector<std::string>& allowed, UiArgs& out)
{
    auto rule = [&](const std::string& name) -> const UiFlag* {
        for (const UiFlag& f : kCommonFlags)
            if (name == f.shortName || name == f.longName) {
                for (const std::string& a : allowed)
                    if (a == f.longName)
                        return &f;
                return nullptr;
            }
        return nullptr;
    };
    for (const ArgValue& a : call.args)
        if (a.isFlag() && (a.flagName() == "q" || a.flagName() == "query"))
            out.query = true;
    for (std::size_t i = 0; i < call.args.size(); ++i) {
        const ArgValue& a = call.args[i];
        if (!a.isFlag()) {
            if (a.isArray())
                out.names.insert(out.names.end(), a.items.begin(), a.items.end());
            else
                out.names.push_back(a.text);
            continue;
        }
        const UiFlag* f = rule(a.flagName());
        if (!f)
            return commandError(call, "Invalid flag '" + a.text + "'");
        if (std::string(f->longName) == "edit")
            out.edit = true;
        std::vector<ArgValue>& values = out.flags[f->longName];
        const int count = out.query || f->count == 0 ? 0 : f->count;
        for (int k = 0; k < count; ++k) {
            if (i + 1 >= call.args.size() || call.args[i + 1].isFlag())
                return commandError(call, "the flag '" + a.text + "' needs " + std::to_string(count) + " argument(s)");
            values.push_back(call.args[++i]);
        }
    }
    if (out.query && out.edit)
        return commandError(call, "-query and -edit cannot be used together");
    return MStatus::kSuccess;
}

// The widget a new control goes into: -parent, else the current parent.
QWidget* parentFor(const CommandCall& call, const UiArgs& args, MStatus& st)
{
    QWidget* p = args.has("parent") ? findUi(args.text("parent")) : ui().parent.data();
    if (!p) {
        st = commandError(call, args.has("parent") ? "no layout named " + args.text("parent")
                                                   : "no window or layout to put the control in (make a window first)",
                          MStatus::kFailure);
        return nullptr;
    }
    st = MStatus::kSuccess;
    return p;
}

void place(QWidget* parent, QWidget* control)
{
    QWidget* holder = parent;
    if (auto* box = qobject_cast<QGroupBox*>(parent))
        holder = box;
    if (!holder->layout())
        new QVBoxLayout(holder);
    holder->layout()->addWidget(control);
}

// Settings every control takes, in create and edit mode.
void applyCommon(QWidget* w, const UiArgs& a)
{
    if (a.has("annotation"))
        w->setToolTip(qText(a.text("annotation")));
    if (a.has("width"))
        w->setFixedWidth(int(a.number("width", 0)));
    if (a.has("height"))
        w->setFixedHeight(int(a.number("height", 0)));
    if (a.has("enable"))
        w->setEnabled(a.boolean("enable", true));
    if (a.has("visible"))
        w->setVisible(a.boolean("visible", true));
    for (auto [flag, property] : {std::pair{"command", kCommand}, {"changeCommand", kChangeCommand},
                                  {"onCommand", kOnCommand}, {"offCommand", kOffCommand},
                                  {"dragCommand", kDragCommand}})
        if (a.has(flag))
            w->setProperty(property, qText(a.text(flag)));
    if (a.has("label")) {
        if (auto* b = qobject_cast<QAbstractButton*>(w))
            b->setText(qText(a.text("label")));
        else if (auto* l = qobject_cast<QLabel*>(w))
            l->setText(qText(a.text("label")));
        else if (auto* g = qobject_cast<QGroupBox*>(w))
            g->setTitle(qText(a.text("label")));
    }
}

// The value of a control, as -query -value gives it.
CommandValue valueOf(QWidget* w)
{
    if (auto* b = qobject_cast<QAbstractButton*>(w))
        return CommandValue::ofInt(b->isChecked() ? 1 : 0);
    if (auto* s = qobject_cast<QSlider*>(w))
        return CommandValue::ofInt(s->value());
    if (auto* s = qobject_cast<QSpinBox*>(w))
        return CommandValue::ofInt(s->value());
    if (auto* s = qobject_cast<QDoubleSpinBox*>(w))
        return CommandValue::ofDouble(s->value());
    return CommandValue::ofInt(0);
}

// Sets the value without running the control's commands.
void setValueOf(QWidget* w, const UiArgs& a)
{
    QSignalBlocker quiet(w);
    if (auto* b = qobject_cast<QAbstractButton*>(w))
        b->setChecked(a.boolean("value", false));
    else if (auto* s = qobject_cast<QSlider*>(w))
        s->setValue(int(a.number("value", 0)));
    else if (auto* s = qobject_cast<QSpinBox*>(w))
        s->setValue(int(a.number("value", 0)));
    else if (auto* s = qobject_cast<QDoubleSpinBox*>(w))
        s->setValue(a.number("value", 0));
}

void applyRange(QWidget* w, const UiArgs& a)
{
    QSignalBlocker quiet(w);
    if (auto* s = qobject_cast<QSlider*>(w)) {
        s->setRange(int(a.number("minValue", s->minimum())), int(a.number("maxValue", s->maximum())));
        if (a.has("step"))
            s->setSingleStep(int(a.number("step", 1)));
    } else if (auto* s = qobject_cast<QSpinBox*>(w)) {
        s->setRange(int(a.number("minValue", s->minimum())), int(a.number("maxValue", s->maximum())));
        if (a.has("step"))
            s->setSingleStep(int(a.number("step", 1)));
    } else if (auto* s = qobject_cast<QDoubleSpinBox*>(w)) {
        if (a.has("precision"))
            s->setDecimals(int(a.number("precision", 3)));
        s->setRange(a.number("minValue", s->minimum()), a.number("maxValue", s->maximum()));
        if (a.has("step"))
            s->setSingleStep(a.number("step", 0.1));
    }
}

MStatus query(const CommandCall& call, QWidget* w, const UiArgs& a, CommandValue& result)
{
    if (a.has("value"))
        result = valueOf(w);
    else if (a.has("label")) {
        if (auto* b = qobject_cast<QAbstractButton*>(w))
            result = CommandValue::ofString(stdText(b->text()));
        else if (auto* l = qobject_cast<QLabel*>(w))
            result = CommandValue::ofString(stdText(l->text()));
        else if (auto* g = qobject_cast<QGroupBox*>(w))
            result = CommandValue::ofString(stdText(g->title()));
        else
            result = CommandValue::ofString("");
    } else if (a.has("title"))
        result = CommandValue::ofString(stdText(w->windowTitle()));
    else if (a.has("enable"))
        result = CommandValue::ofInt(w->isEnabled() ? 1 : 0);
    else if (a.has("visible"))
        result = CommandValue::ofInt(w->isVisible() ? 1 : 0);
    else if (a.has("minValue") || a.has("maxValue")) {
        const bool min = a.has("minValue");
        if (auto* s = qobject_cast<QAbstractSlider*>(w))
            result = CommandValue::ofInt(min ? s->minimum() : s->maximum());
        else if (auto* s = qobject_cast<QSpinBox*>(w))
            result = CommandValue::ofInt(min ? s->minimum() : s->maximum());
        else if (auto* s = qobject_cast<QDoubleSpinBox*>(w))
            result = CommandValue::ofDouble(min ? s->minimum() : s->maximum());
    } else {
        for (auto [flag, property] : {std::pair{"command", kCommand}, {"changeCommand", kChangeCommand},
                                      {"onCommand", kOnCommand}, {"offCommand", kOffCommand}})
            if (a.has(flag)) {
                result = CommandValue::ofString(stdText(w->property(property).toString()));
                return MStatus::kSuccess;
            }
        return commandError(call, "give the flag to query");
    }
    return MStatus::kSuccess;
}

// The shared frame of every control command: -exists, query, edit or create.
using Maker = std::function<QWidget*(QWidget* parent, const UiArgs& args)>;

MStatus controlCommand(const CommandCall& call, const std::vector<std::string>& flags, const Maker& make,
                       bool isLayout, CommandValue& result)
{
    deleteDoomed();
    UiArgs a;
    MStatus st = parseUi(call, flags, a);
    if (!st)
        return st;
    if (a.has("exists")) {
        result = CommandValue::ofInt(!a.names.empty() && findUi(a.names.back()) ? 1 : 0);
        return MStatus::kSuccess;
    }
    if (a.names.size() > 1)
        return commandError(call, "give one control name");
    if (a.query || a.edit) {
        if (a.names.empty())
            return commandError(call, "give the control to " + std::string(a.query ? "query" : "edit"));
        QWidget* w = findUi(a.names.back());
        if (!w || w->property(kKind).toString() != qText(call.name))
            return commandError(call, "Object not found: " + a.names.back(), MStatus::kNotFound);
        if (a.query)
            return query(call, w, a, result);
        applyCommon(w, a);
        applyRange(w, a);
        if (a.has("value"))
            setValueOf(w, a);
        if (a.has("title"))
            w->setWindowTitle(qText(a.text("title")));
        result = CommandValue::ofString(pathOf(w));
        return MStatus::kSuccess;
    }
    QWidget* parent = parentFor(call, a, st);
    if (!parent)
        return st;
    std::string name = a.names.empty() ? uniqueName(call.name) : a.names.back();
    if (name.find('|') != std::string::npos || name.empty())
        return commandError(call, "'" + name + "' is not a control name");
    QWidget* w = make(parent, a);
    w->setObjectName(qText(name));
    w->setProperty(kKind, qText(call.name));
    place(parent, w);
    applyCommon(w, a);
    applyRange(w, a);
    if (a.has("value"))
        setValueOf(w, a);
    if (isLayout)
        ui().parent = w;
    result = CommandValue::ofString(pathOf(w));
    return MStatus::kSuccess;
}

std::vector<std::string> withCommon(std::vector<std::string> own)
{
    for (const char* f : {"query", "edit", "exists", "annotation", "width", "height", "enable", "visible", "parent"})
        own.push_back(f);
    return own;
}

// ---- the commands -------------------------------------------------------------------

MStatus windowCommand(const CommandCall& call, CommandValue& result)
{
    deleteDoomed();
    UiArgs a;
    MStatus st = parseUi(call, withCommon({"title", "widthHeight", "resizeToFitChildren", "sizeable"}), a);
    if (!st)
        return st;
    auto findWindow = [](const std::string& name) -> QWidget* {
        for (const QPointer<QWidget>& w : ui().windows)
            if (w && w->objectName() == qText(name))
                return w;
        return nullptr;
    };
    if (a.has("exists")) {
        result = CommandValue::ofInt(!a.names.empty() && findWindow(a.names.back()) ? 1 : 0);
        return MStatus::kSuccess;
    }
    if (a.query || a.edit) {
        QWidget* w = a.names.empty() ? nullptr : findWindow(a.names.back());
        if (!w)
            return commandError(call, "Object not found: " + (a.names.empty() ? std::string() : a.names.back()),
                                MStatus::kNotFound);
        if (a.query) {
            if (a.has("widthHeight")) {
                result = CommandValue::ofInts({w->width(), w->height()});
                return MStatus::kSuccess;
            }
            return query(call, w, a, result);
        }
        if (a.has("title"))
            w->setWindowTitle(qText(a.text("title")));
        if (a.has("widthHeight"))
            w->resize(int(a.number("widthHeight", 100, 0)), int(a.number("widthHeight", 100, 1)));
        applyCommon(w, a);
        result = CommandValue::ofString(stdText(w->objectName()));
        return MStatus::kSuccess;
    }
    std::string name = a.names.empty() ? uniqueName("window") : a.names.back();
    if (findWindow(name))
        return commandError(call, "Object's name '" + name + "' is not unique", MStatus::kFailure);
    ensureApplication();
    if (!ui().cleanupRegistered) {
        // After the application is made, so the windows go before it does at exit.
        std::atexit(deleteWindows);
        ui().cleanupRegistered = true;
    }
    auto* w = new QWidget;
    w->setObjectName(qText(name));
    w->setProperty(kKind, "window");
    w->setWindowTitle(qText(a.has("title") ? a.text("title") : name));
    new QVBoxLayout(w);
    if (a.has("widthHeight"))
        w->resize(int(a.number("widthHeight", 100, 0)), int(a.number("widthHeight", 100, 1)));
    applyCommon(w, a);
    ui().windows.push_back(w);
    ui().parent = w;
    ui().lastWindow = w;
    result = CommandValue::ofString(name);
    return MStatus::kSuccess;
}

MStatus showWindowCommand(const CommandCall& call, CommandValue&)
{
    QWidget* w = call.args.empty() ? ui().lastWindow.data() : findUi(call.args.back().text);
    if (!w || !w->isWindow())
        return commandError(call, "no window " + (call.args.empty() ? std::string() : call.args.back().text),
                            MStatus::kNotFound);
    w->show();
    w->adjustSize();
    return MStatus::kSuccess;
}

MStatus deleteUICommand(const CommandCall& call, CommandValue&)
{
    UiArgs a;
    MStatus st = parseUi(call, {"window", "control", "layout", "toolContext"}, a);
    if (!st)
        return st;
    if (a.has("toolContext")) {
        for (const std::string& name : a.names) {
            if (!ToolRegistry::instance().find(name))
                return commandError(call, "Object '" + name + "' not found.", MStatus::kNotFound);
        }
        for (const std::string& name : a.names) {
            st = ToolRegistry::instance().deleteContext(name);
            if (!st)
                return st;
        }
        return MStatus::kSuccess;
    }
    std::vector<QWidget*> found;
    for (const std::string& name : a.names) {
        QWidget* w = findUi(name);
        if (!w)
            return commandError(call, "Object '" + name + "' not found.", MStatus::kNotFound);
        found.push_back(w);
    }
    for (QWidget* w : found) {
        // The parent stack must not keep a widget that goes.
        if (ui().parent && (ui().parent == w || w->isAncestorOf(ui().parent)))
            ui().parent = nullptr;
        if (ui().running > 0) {
            // A control's own command may delete it: it goes once the command is done, and
            // is nameless and hidden until then.
            w->hide();
            w->setObjectName(QString());
            for (QWidget* child : w->findChildren<QWidget*>())
                child->setObjectName(QString());
            w->deleteLater();
            ui().doomed.push_back(w);
        } else {
            delete w;
        }
    }
    return MStatus::kSuccess;
}

MStatus setParentCommand(const CommandCall& call, CommandValue& result)
{
    if (call.args.size() != 1 || call.args[0].isFlag())
        return commandError(call, "give a layout, or '..'");
    const std::string& name = call.args[0].text;
    if (name == "..") {
        QWidget* p = ui().parent;
        if (p && !p->isWindow()) {
            QWidget* up = p->parentWidget();
            while (up && !up->property(kKind).isValid())
                up = up->parentWidget();
            ui().parent = up;
        }
    } else {
        QWidget* p = findUi(name);
        if (!p)
            return commandError(call, "no layout named " + name, MStatus::kNotFound);
        ui().parent = p;
    }
    result = CommandValue::ofString(ui().parent ? pathOf(ui().parent) : std::string());
    return MStatus::kSuccess;
}

void connectButton(QAbstractButton* b, bool toggles)
{
    QObject::connect(b, &QAbstractButton::clicked, b, [b, toggles](bool on) {
        QPointer<QAbstractButton> guard(b);
        runCommandText(b->property(kCommand));
        if (guard)
            runChange(b, on, toggles);
    });
}

QWidget* makeLayout(QWidget* parent, bool row)
{
    auto* w = new QWidget(parent);
    auto* layout = row ? static_cast<QBoxLayout*>(new QHBoxLayout(w)) : new QVBoxLayout(w);
    layout->setContentsMargins(2, 2, 2, 2);
    return w;
}

struct Registrar {
    Registrar()
    {
        registerBuiltinCommand("window", windowCommand);
        registerBuiltinCommand("showWindow", showWindowCommand);
        registerBuiltinCommand("deleteUI", deleteUICommand);
        registerBuiltinCommand("setParent", setParentCommand);
        registerBuiltinCommand("columnLayout", [](const CommandCall& c, CommandValue& r) {
            return controlCommand(c, withCommon({"adjustableColumn", "rowSpacing"}),
                                  [](QWidget* p, const UiArgs& a) {
                                      QWidget* w = makeLayout(p, false);
                                      w->layout()->setSpacing(int(a.number("rowSpacing", 2)));
                                      return w;
                                  },
                                  true, r);
        });
        registerBuiltinCommand("rowLayout", [](const CommandCall& c, CommandValue& r) {
            return controlCommand(c, withCommon({"numberOfColumns", "adjustableColumn", "columnSpacing"}),
                                  [](QWidget* p, const UiArgs&) { return makeLayout(p, true); }, true, r);
        });
        registerBuiltinCommand("frameLayout", [](const CommandCall& c, CommandValue& r) {
            return controlCommand(c, withCommon({"label", "collapsable", "collapse", "marginHeight", "marginWidth"}),
                                  [](QWidget* p, const UiArgs&) {
                                      auto* g = new QGroupBox(p);
                                      new QVBoxLayout(g);
                                      return static_cast<QWidget*>(g);
                                  },
                                  true, r);
        });
        registerBuiltinCommand("text", [](const CommandCall& c, CommandValue& r) {
            return controlCommand(c, withCommon({"label", "align"}),
                                  [](QWidget* p, const UiArgs&) { return static_cast<QWidget*>(new QLabel(p)); },
                                  false, r);
        });
        registerBuiltinCommand("separator", [](const CommandCall& c, CommandValue& r) {
            return controlCommand(c, withCommon({"style"}),
                                  [](QWidget* p, const UiArgs&) {
                                      auto* f = new QFrame(p);
                                      f->setFrameShape(QFrame::HLine);
                                      return static_cast<QWidget*>(f);
                                  },
                                  false, r);
        });
        registerBuiltinCommand("button", [](const CommandCall& c, CommandValue& r) {
            return controlCommand(c, withCommon({"label", "command"}),
                                  [](QWidget* p, const UiArgs&) {
                                      auto* b = new QPushButton(p);
                                      connectButton(b, false);
                                      return static_cast<QWidget*>(b);
                                  },
                                  false, r);
        });
        // Deliberate: a checkable QPushButton, so that the plug-in's cast to QPushButton of
        // "tqSarnLaunchBtn", "freezeBtn" and "freezeSymBtn" finds it.
        registerBuiltinCommand("iconTextCheckBox", [](const CommandCall& c, CommandValue& r) {
            return controlCommand(c,
                                  withCommon({"label", "value", "changeCommand", "onCommand", "offCommand",
                                              "image", "image1", "style"}),
                                  [](QWidget* p, const UiArgs&) {
                                      auto* b = new QPushButton(p);
                                      b->setCheckable(true);
                                      connectButton(b, true);
                                      return static_cast<QWidget*>(b);
                                  },
                                  false, r);
        });
        registerBuiltinCommand("checkBox", [](const CommandCall& c, CommandValue& r) {
            return controlCommand(c, withCommon({"label", "value", "changeCommand", "onCommand", "offCommand"}),
                                  [](QWidget* p, const UiArgs&) {
                                      auto* b = new QCheckBox(p);
                                      connectButton(b, true);
                                      return static_cast<QWidget*>(b);
                                  },
                                  false, r);
        });
        registerBuiltinCommand("intSlider", [](const CommandCall& c, CommandValue& r) {
            return controlCommand(c, withCommon({"value", "minValue", "maxValue", "step", "changeCommand",
                                                 "dragCommand"}),
                                  [](QWidget* p, const UiArgs&) {
                                      auto* s = new QSlider(Qt::Horizontal, p);
                                      s->setRange(0, 100);
                                      QObject::connect(s, &QSlider::valueChanged, s, [s](int) {
                                          runCommandText(s->property(s->isSliderDown() ? kDragCommand : kChangeCommand));
                                      });
                                      QObject::connect(s, &QSlider::sliderReleased, s,
                                                       [s] { runCommandText(s->property(kChangeCommand)); });
                                      return static_cast<QWidget*>(s);
                                  },
                                  false, r);
        });
        registerBuiltinCommand("intField", [](const CommandCall& c, CommandValue& r) {
            return controlCommand(c, withCommon({"value", "minValue", "maxValue", "step", "changeCommand",
                                                 "enterCommand"}),
                                  [](QWidget* p, const UiArgs&) {
                                      auto* s = new QSpinBox(p);
                                      s->setRange(INT_MIN, INT_MAX);
                                      QObject::connect(s, &QSpinBox::valueChanged, s,
                                                       [s](int) { runCommandText(s->property(kChangeCommand)); });
                                      return static_cast<QWidget*>(s);
                                  },
                                  false, r);
        });
        registerBuiltinCommand("floatField", [](const CommandCall& c, CommandValue& r) {
            return controlCommand(c, withCommon({"value", "minValue", "maxValue", "step", "precision",
                                                 "changeCommand", "enterCommand"}),
                                  [](QWidget* p, const UiArgs&) {
                                      auto* s = new QDoubleSpinBox(p);
                                      s->setDecimals(3);
                                      s->setRange(-1e9, 1e9);
                                      QObject::connect(s, &QDoubleSpinBox::valueChanged, s,
                                                       [s](double) { runCommandText(s->property(kChangeCommand)); });
                                      return static_cast<QWidget*>(s);
                                  },
                                  false, r);
        });
    }
} gRegistrar;

} // namespace

bool grabWidget(const std::string& name, const std::string& pngPath)
{
    deleteDoomed();
    QWidget* w = findUi(name);
    if (!w)
        return false;
    w->adjustSize();
    return w->grab().save(qText(pngPath), "PNG");
}

} // namespace host
