#include "platform/dialogs.h"
#include "runtime/vb.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <cctype>
#include <cstdio>
#include <deque>
#include <fstream>
#include <optional>

#include "platform/paths.h"

namespace dialogs {
namespace {

// ---- buttons -----------------------------------------------------------------------------

struct Button {
    const char* name;
    int result;
    QMessageBox::StandardButton qt;
};

constexpr Button ok{"OK", vbOK, QMessageBox::Ok}, cancel{"Cancel", vbCancel, QMessageBox::Cancel},
    abort_{"Abort", vbAbort, QMessageBox::Abort}, retry{"Retry", vbRetry, QMessageBox::Retry},
    ignore{"Ignore", vbIgnore, QMessageBox::Ignore}, yes{"Yes", vbYes, QMessageBox::Yes},
    no{"No", vbNo, QMessageBox::No};

// The buttons of a box in the order they stand, by the low three bits of the flags. An
// unknown set shows OK alone, as the classic box did.
std::vector<Button> buttonsof(int flags)
{
    switch (flags & 7) {
    case vbOKCancel: return {ok, cancel};
    case vbAbortRetryIgnore: return {abort_, retry, ignore};
    case vbYesNoCancel: return {yes, no, cancel};
    case vbYesNo: return {yes, no};
    case vbRetryCancel: return {retry, cancel};
    default: return {ok};
    }
}

// The default button: 256 the second, 512 the third; one past the last falls back to the first.
Button defaultof(int flags)
{
    auto buttons = buttonsof(flags);
    size_t index = (size_t)((flags >> 8) & 3);
    return index < buttons.size() ? buttons[index] : buttons[0];
}

// Where the box is closed without a button: Cancel where there is one, else the default.
Button closedof(int flags)
{
    for (const auto& b : buttonsof(flags))
        if (b.result == vbCancel) return b;
    return defaultof(flags);
}

std::string nameof(int result)
{
    for (const auto& b : {ok, cancel, abort_, retry, ignore, yes, no})
        if (b.result == result) return b.name;
    return std::to_string(result);
}

// A button of this box named by `answer` (its name or its result number), if any.
std::optional<Button> buttonnamed(int flags, const std::string& answer)
{
    std::string want = LCase(trimblanks(answer));
    for (const auto& b : buttonsof(flags))
        if (LCase(b.name) == want || std::to_string(b.result) == want) return b;
    return std::nullopt;
}

// Line breaks as the transcript writes them, so a rule can quote a text copied from there.
std::string oneline(const std::string& text)
{
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        if (text[i] == '\r' || text[i] == '\n') out += "\\n";
        else out += text[i];
    }
    return out;
}

// ---- answers: queued ones and the answers file ------------------------------------------

struct Queued {
    std::optional<int> result;  // queueanswer
    std::string text;           // queueinput
};

struct Rule {
    std::string title;  // lower case
    std::string part;   // lower case; empty for a title rule
    std::string answer;
};

struct State {
    std::deque<Queued> queue;
    bool unattended = false;
    std::vector<Entry> transcript;
    bool loaded = false;
    std::string loadedfor;     // the install folder and [dialogs] settings last read
    bool answering = false;    // [dialogs] answers is set
    std::vector<Rule> rules;   // text rules first, each kind in file order
    std::string transcriptfile;
};

State& state()
{
    static State s;
    return s;
}


std::string settingskey()
{
    return platform::hostinstalldir() + "\n" + platform::setting("dialogs", "answers") + "\n" +
           platform::setting("dialogs", "transcript");
}

// The answers file (see dialogs.h). Titles and text parts are compared without regard to
// case; a line break of the box's text is written \n in a text part, as in the transcript.
// Paths in [dialogs] are host paths, relative ones taken from the install folder.
void readanswers(State& s)
{
    s.rules.clear();
    s.loaded = true;
    s.loadedfor = settingskey();
    s.transcriptfile = settingfile("transcript");
    std::string file = settingfile("answers");
    s.answering = !file.empty();
    if (file.empty()) return;
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "dialogs: cannot read the answers file %s; every box takes its default button\n",
                     file.c_str());
        return;
    }
    std::vector<Rule> titlerules;
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        std::string t = trimblanks(line);
        if (t.empty() || t[0] == '#') continue;
        auto arrow = t.find("=>");
        if (arrow == std::string::npos) {
            std::fprintf(stderr, "dialogs: %s line %d has no \"=>\" and is left out\n", file.c_str(), number);
            continue;
        }
        Rule r;
        std::string left = t.substr(0, arrow);
        r.answer = trimblanks(t.substr(arrow + 2));
        auto bar = left.find('|');
        r.title = LCase(trimblanks(left.substr(0, bar)));
        if (bar != std::string::npos) r.part = LCase(trimblanks(left.substr(bar + 1)));
        (r.part.empty() ? titlerules : s.rules).push_back(r);
    }
    s.rules.insert(s.rules.end(), titlerules.begin(), titlerules.end());
}

State& current()
{
    auto& s = state();
    // Read on first use, and again when platform.ini has been read anew with other values.
    if (!s.loaded || s.loadedfor != settingskey()) readanswers(s);
    return s;
}

const Rule* rulefor(const State& s, const std::string& title, const std::string& text)
{
    std::string t = LCase(title), body = LCase(oneline(text));
    for (const auto& r : s.rules)
        if (r.title == t && (r.part.empty() || body.find(r.part) != std::string::npos)) return &r;
    return nullptr;
}

void record(const Entry& e)
{
    auto& s = current();
    s.transcript.push_back(e);
    if (s.transcriptfile.empty()) return;
    std::ofstream out(s.transcriptfile, std::ios::binary | std::ios::app);
    out << describe(e) << "\n";
    out.flush();
    if (!out)
        std::fprintf(stderr, "dialogs: cannot write the transcript file %s\n", s.transcriptfile.c_str());
}

// ---- showing -----------------------------------------------------------------------------

bool canshow() { return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr; }

QString caption(const std::string& title)
{
    return title.empty() ? QCoreApplication::applicationName() : QString::fromLatin1(title.c_str());
}

int showmessage(const std::string& text, int flags, const std::string& title)
{
    QMessageBox box;
    box.setWindowTitle(caption(title));
    box.setText(QString::fromLatin1(text.c_str()));
    switch (flags & 0x70) {
    case vbCritical: box.setIcon(QMessageBox::Critical); break;
    case vbQuestion: box.setIcon(QMessageBox::Question); break;
    case vbExclamation: box.setIcon(QMessageBox::Warning); break;
    case vbInformation: box.setIcon(QMessageBox::Information); break;
    default: break;
    }
    for (const auto& b : buttonsof(flags)) box.addButton(b.qt);
    box.setDefaultButton(defaultof(flags).qt);
    box.setEscapeButton(closedof(flags).qt);
    if (flags & vbSystemModal) box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.exec();
    auto* clicked = box.clickedButton();
    for (const auto& b : buttonsof(flags))
        if (clicked && box.standardButton(clicked) == b.qt) return b.result;
    return closedof(flags).result;
}

std::optional<std::string> showinput(const std::string& prompt, const std::string& title, const std::string& defaulttext)
{
    QInputDialog box;
    box.setWindowTitle(caption(title));
    box.setLabelText(QString::fromLatin1(prompt.c_str()));
    box.setTextValue(QString::fromLatin1(defaulttext.c_str()));
    if (box.exec() != QDialog::Accepted) return std::nullopt;
    return box.textValue().toLatin1().toStdString();
}

}  // namespace

void queueanswer(int result) { state().queue.push_back({result, {}}); }
void queueinput(const std::string& text) { state().queue.push_back({std::nullopt, text}); }
void setunattended(bool on) { state().unattended = on; }
const std::vector<Entry>& transcript() { return state().transcript; }
void cleartranscript() { state().transcript.clear(); }

void reset()
{
    auto& s = state();
    s.queue.clear();
    readanswers(s);
}

std::string settingfile(const std::string& key)
{
    std::string p = platform::setting("dialogs", key);
    if (p.empty() || p[0] == '/') return p;
    return platform::hostinstalldir() + "/" + p;
}

void note(const Entry& e) { record(e); }

std::string describe(const Entry& e)
{
    if (e.kind == "Action") return "Action \"" + e.title + "\" => " + e.answer;
    std::string out = e.kind + " \"" + oneline(e.title) + "\" \"" + oneline(e.text) + "\"";
    if (e.kind == "MsgBox") {
        std::string buttons;
        for (const auto& b : buttonsof(e.flags)) buttons += (buttons.empty() ? "" : "/") + std::string(b.name);
        out += " [" + buttons + ", default " + defaultof(e.flags).name;
        switch (e.flags & 0x70) {
        case vbCritical: out += ", Critical"; break;
        case vbQuestion: out += ", Question"; break;
        case vbExclamation: out += ", Exclamation"; break;
        case vbInformation: out += ", Information"; break;
        default: break;
        }
        return out + "] => " + e.answer;
    }
    return out + " => \"" + oneline(e.answer) + "\"";
}

}  // namespace dialogs

using namespace dialogs;

namespace {
std::function<void(const std::string&)>& whileopen()
{
    static std::function<void(const std::string&)> run;
    return run;
}
}  // namespace

void dialogs::setwhileopen(std::function<void(const std::string& title)> run) { whileopen() = std::move(run); }

int MsgBox(const std::string& text, int flags, const std::string& title)
{
    if (whileopen()) whileopen()(title);
    auto& s = current();
    std::optional<int> result;
    if (!s.queue.empty()) {
        Queued q = s.queue.front();
        s.queue.pop_front();
        if (q.result) {
            result = *q.result;
        } else if (auto b = buttonnamed(flags, q.text)) {
            result = b->result;
        } else {
            std::fprintf(stderr, "dialogs: queued answer \"%s\" names no button of \"%s\"\n", q.text.c_str(), title.c_str());
        }
    } else if (s.answering) {
        if (const Rule* r = rulefor(s, title, text)) {
            if (auto b = buttonnamed(flags, r->answer)) result = b->result;
            else std::fprintf(stderr, "dialogs: answer \"%s\" names no button of \"%s\"\n", r->answer.c_str(), title.c_str());
        }
    } else if (!s.unattended && canshow()) {
        result = showmessage(text, flags, title);
    }
    if (!result) result = defaultof(flags).result;
    record({"MsgBox", title, text, flags, nameof(*result), *result});
    return *result;
}

std::string InputBox(const std::string& prompt, const std::string& title, const std::string& defaulttext)
{
    auto& s = current();
    std::optional<std::string> answer;
    if (!s.queue.empty()) {
        Queued q = s.queue.front();
        s.queue.pop_front();
        if (!q.result) answer = q.text;
        else answer = *q.result == vbCancel ? std::string() : defaulttext;
    } else if (s.answering) {
        if (const Rule* r = rulefor(s, title, prompt)) answer = r->answer;
    } else if (!s.unattended && canshow()) {
        answer = showinput(prompt, title, defaulttext).value_or("");
    }
    if (!answer) answer = defaulttext;
    record({"InputBox", title, prompt, 0, *answer, 0});
    return *answer;
}
