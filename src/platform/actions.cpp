#include "platform/actions.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QListWidget>
#include <QMetaMethod>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "platform/dialogs.h"
#include "runtime/vb.h"
#include "core/runtimeerror.h"

namespace actions {
namespace {

constexpr int tick = 100;   // ms between looks at the screen an event waits for

struct Player {
    std::vector<Action> list;
    size_t next = 0;
    QElapsedTimer since;        // since the current action became the next one
    QPointer<QTimer> timer;
    int timeout = 60000;
};

Player& player()
{
    static Player p;
    return p;
}

// Splits a line into blank-separated words.
std::vector<std::string> words(const std::string& line)
{
    std::istringstream in(line);
    std::vector<std::string> out;
    for (std::string w; in >> w;) out.push_back(w);
    return out;
}

bool wholenumber(const std::string& t, int& value)
{
    if (t.empty() || t.size() > 6) return false;
    for (char c : t)
        if (c < '0' || c > '9') return false;
    value = std::stoi(t);
    return true;
}

bool seconds(const std::string& t, double& value)
{
    try {
        size_t used = 0;
        value = std::stod(t, &used);
        return used == t.size() && value >= 0 && value <= 86400;
    } catch (const std::exception&) {
        return false;
    }
}

QWidget* screennamed(const std::string& name)
{
    const QString wanted = QString::fromLatin1(name.c_str());
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == wanted) return w;
    return nullptr;
}

// The monitor form is never shown; its tray menu entries are there once its load sequence
// has ended (while it runs, the property "loading" is set), so an entry is not chosen
// before the settings it acts on are read.
bool shown(const QWidget* screen)
{
    return screen->isVisible() || (screen->objectName() == "Form9" && !screen->property("loading").toBool());
}

// The control of an action if its screen is shown and the control is enabled, else null.
QObject* ready(const Action& a)
{
    QWidget* screen = screennamed(a.screen);
    if (!screen || !shown(screen)) return nullptr;
    QObject* control = screen->findChild<QObject*>(QString::fromLatin1(a.control.c_str()));
    if (auto* w = qobject_cast<QWidget*>(control)) return w->isEnabled() ? w : nullptr;
    if (auto* entry = qobject_cast<QAction*>(control)) return entry->isEnabled() ? entry : nullptr;
    return nullptr;
}

bool emitsignal(QObject* control, const char* signature)
{
    const QMetaObject* meta = control->metaObject();
    int index = meta->indexOfSignal(signature);
    if (index < 0) return false;
    return meta->method(index).invoke(control, Qt::DirectConnection);
}

// Fires the control's own event. Returns a text for the transcript.
std::string fire(QObject* control, const Action& a)
{
    if (auto* list = qobject_cast<QListWidget*>(control); list && a.argument >= 0) {
        if (a.argument >= list->count()) return "refused: the list has no row " + std::to_string(a.argument);
        list->setCurrentRow(a.argument);
    }
    if (a.event == "click") {
        if (auto* entry = qobject_cast<QAction*>(control)) {
            entry->trigger();
            return "done";
        }
        if (auto* button = qobject_cast<QAbstractButton*>(control)) {
            button->click();
            return "done";
        }
        if (emitsignal(control, "clicked()")) return "done";
        // A list's click is its row being chosen, done above, and clicked as a mouse would.
        if (auto* list = qobject_cast<QListWidget*>(control)) {
            if (QListWidgetItem* row = list->currentItem()) emit list->itemClicked(row);
            return "done";
        }
    } else if (emitsignal(control, "doubleclicked()")) {
        return "done";
    }
    return "refused: " + a.control + " has no " + a.event + " event";
}

void note(const std::string& what, const std::string& outcome)
{
    dialogs::Entry e;
    e.kind = "Action";
    e.title = what;
    e.answer = outcome;
    dialogs::note(e);
}

void finish()
{
    auto& p = player();
    if (p.timer) p.timer->stop();
    p.list.clear();
    p.next = 0;
}

void step()
{
    auto& p = player();
    if (p.next >= p.list.size()) {
        finish();
        return;
    }
    const Action a = p.list[p.next];
    if (a.screen.empty()) {
        if (p.since.elapsed() < (qint64)(a.wait * 1000)) return;
        note(a.text, "done");
        ++p.next;
        p.since.restart();
        return;
    }
    QPointer<QObject> control = ready(a);
    if (!control) {
        if (p.since.elapsed() < p.timeout) return;
        std::string why = "not reached: " + a.screen + " was not shown with " + a.control +
                          " enabled within " + std::to_string(p.timeout / 1000) + " s; the actions stop here";
        std::fprintf(stderr, "actions: line %d \"%s\": %s\n", a.line, a.text.c_str(), why.c_str());
        note(a.text, why);
        finish();
        return;
    }
    // The next action may be waited for while this event's routine runs (a routine that
    // waits for a click of its own), so the player moves on before firing, and fires from a
    // timer of its own.
    ++p.next;
    p.since.restart();
    QTimer::singleShot(0, guard([control, a] {
        if (!control) {
            note(a.text, "refused: the control went away");
            return;
        }
        note(a.text, "fired");
        std::string outcome = fire(control, a);
        if (outcome != "done") {
            std::fprintf(stderr, "actions: line %d \"%s\": %s\n", a.line, a.text.c_str(), outcome.c_str());
            note(a.text, outcome);
        }
    }));
}

}  // namespace

std::vector<Action> parse(const std::string& text, std::vector<std::string>& errors)
{
    std::vector<Action> out;
    std::istringstream in(text);
    std::string raw;
    int number = 0;
    while (std::getline(in, raw)) {
        ++number;
        std::string line = trimblanks(raw.substr(0, raw.find('#')));
        if (!line.empty() && line.back() == '\r') line.pop_back();
        line = trimblanks(line);
        if (line.empty()) continue;
        auto w = words(line);
        auto bad = [&](const std::string& why) {
            errors.push_back("line " + std::to_string(number) + " \"" + line + "\": " + why);
        };
        Action a;
        a.line = number;
        a.text = line;
        if (LCase(w[0]) == "wait") {
            if (w.size() != 2 || !seconds(w[1], a.wait)) {
                bad("a wait takes one number of seconds");
                continue;
            }
            out.push_back(a);
            continue;
        }
        auto dot = w[0].find('.');
        if (dot == std::string::npos || dot == 0 || dot + 1 == w[0].size()) {
            bad("expected Screen.Control event [argument] or wait SECONDS");
            continue;
        }
        a.screen = w[0].substr(0, dot);
        a.control = w[0].substr(dot + 1);
        if (w.size() < 2 || (LCase(w[1]) != "click" && LCase(w[1]) != "dblclick")) {
            bad("the event is click or dblclick");
            continue;
        }
        a.event = LCase(w[1]);
        if (w.size() > 3 || (w.size() == 3 && !wholenumber(w[2], a.argument))) {
            bad("the argument is one row number from 0");
            continue;
        }
        out.push_back(a);
    }
    return out;
}

void play(std::vector<Action> list)
{
    auto& p = player();
    p.list = std::move(list);
    p.next = 0;
    p.since.start();
    if (!p.timer) {
        p.timer = new QTimer(QCoreApplication::instance());
        p.timer->setObjectName("ActionsTimer");
        QObject::connect(p.timer, &QTimer::timeout, guard([] { step(); }));
    }
    p.timer->start(tick);
}

void start()
{
    std::string file = dialogs::settingfile("actions");
    if (file.empty()) return;
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "actions: cannot read the actions file %s; nothing is played\n", file.c_str());
        note(file, "not played: the file cannot be read");
        return;
    }
    std::stringstream text;
    text << in.rdbuf();
    std::vector<std::string> errors;
    auto list = parse(text.str(), errors);
    if (!errors.empty()) {
        for (const auto& e : errors) {
            std::fprintf(stderr, "actions: %s: %s\n", file.c_str(), e.c_str());
            note(file, "not played: " + e);
        }
        return;
    }
    play(std::move(list));
}

bool playing() { return player().next < player().list.size(); }

void stop() { finish(); }

void settimeout(int ms) { player().timeout = ms; }

}  // namespace actions
