#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QKeyEvent>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>

#include "platform/dialogs.h"
#include "support/tempinstall.h"

namespace {

struct Dialogs : ::testing::Test {
    TempInstall t;  // outlives TearDown, whose reset rereads its platform.ini

    void SetUp() override
    {
        dialogs::setunattended(true);  // a box that slips through must never wait for a hand
        dialogs::cleartranscript();
    }
    void TearDown() override
    {
        dialogs::setunattended(false);
        dialogs::reset();
        dialogs::cleartranscript();
    }

    // An install whose answers file holds `rules` and whose transcript goes to a file.
    void answering(const std::string& rules)
    {
        TempInstall::writefile(t.root() + "/answers.txt", rules);
        t.configure("[dialogs]\nanswers=answers.txt\ntranscript=" + t.root() + "/transcript.txt\n");
        dialogs::reset();
    }
};

TEST_F(Dialogs, AnswersFileByTitleWithTextRulesFirst)
{
    answering(
              "# the title rule stands first, yet the text rule wins where it fits\n"
              "Transfer Local Data => No\n"
              "Transfer Local Data | LOCALLY HELD data => Yes\n"
              "Two Lines | first\\nsecond => Cancel\n"
              "Form9: Load => 1\n"
              "Only OK => Yes\n"
              "this line has no arrow\n");

    EXPECT_EQ(MsgBox("There appears to be locally held data! Would you like to transfer this to the server before closing?",
                     vbYesNo + vbQuestion, "Transfer Local Data"),
              vbYes);
    EXPECT_EQ(MsgBox("Something else", vbYesNo + vbQuestion, "transfer local data"), vbNo);
    EXPECT_EQ(MsgBox("first\r\nsecond", vbOKCancel, "Two Lines"), vbCancel);
    EXPECT_EQ(MsgBox("Unexpected", vbOKOnly + vbExclamation, "Form9: Load"), vbOK);
    // No rule: the default button, without showing the box.
    EXPECT_EQ(MsgBox("?", vbYesNoCancel + vbDefaultButton2, "Nobody Asked"), vbNo);
    EXPECT_EQ(MsgBox("?", vbAbortRetryIgnore + vbDefaultButton3, "Nobody Asked"), vbIgnore);
    // An answer that names no button of the box counts as no answer.
    EXPECT_EQ(MsgBox("?", vbOKOnly, "Only OK"), vbOK);

    const auto& entries = dialogs::transcript();
    ASSERT_EQ(entries.size(), 7u);
    EXPECT_EQ(entries[0].answer, "Yes");
    EXPECT_EQ(entries[1].answer, "No");
    EXPECT_EQ(entries[4].result, vbNo);

    // The file holds every box, one line each, as describe() gives it.
    std::istringstream file(TempInstall::readfile(t.root() + "/transcript.txt"));
    std::string line;
    for (const auto& e : entries) {
        ASSERT_TRUE(std::getline(file, line));
        EXPECT_EQ(line, dialogs::describe(e));
    }
    EXPECT_FALSE(std::getline(file, line));
    EXPECT_EQ(dialogs::describe(entries[2]), "MsgBox \"Two Lines\" \"first\\nsecond\" [OK/Cancel, default OK] => Cancel");
    EXPECT_EQ(dialogs::describe(entries[4]),
              "MsgBox \"Nobody Asked\" \"?\" [Yes/No/Cancel, default No] => No");
}

TEST_F(Dialogs, InputBoxFromAnswersFileOrDefaultText)
{
    // Read on first use, without a reset.
    TempInstall::writefile(t.root() + "/answers.txt", "Company Name | your company => Vexal Ltd\n");
    t.configure("[dialogs]\nanswers=" + t.root() + "/answers.txt\n");
    EXPECT_EQ(InputBox("Please enter your company name", "Company Name", "old"), "Vexal Ltd");
    EXPECT_EQ(InputBox("Something else", "Company Name", "old"), "old");
    EXPECT_EQ(dialogs::describe(dialogs::transcript().back()),
              "InputBox \"Company Name\" \"Something else\" => \"old\"");
}

TEST_F(Dialogs, QueuedAnswersComeFirstAndInOrder)
{
    answering("Question => No\n");
    dialogs::queueanswer(vbRetry);
    dialogs::queueinput("typed");
    dialogs::queueanswer(vbCancel);
    dialogs::queueinput("yes");  // a button named in text
    EXPECT_EQ(MsgBox("?", vbAbortRetryIgnore, "Question"), vbRetry);
    EXPECT_EQ(InputBox("Name?", "Question", "default"), "typed");
    EXPECT_EQ(InputBox("Name?", "Question", "default"), "");  // Cancel
    EXPECT_EQ(MsgBox("?", vbYesNo, "Question"), vbYes);
    // The queue is empty: the answers file again.
    EXPECT_EQ(MsgBox("?", vbYesNo, "Question"), vbNo);

    dialogs::queueanswer(vbOK);
    dialogs::reset();  // drops what is queued
    EXPECT_EQ(MsgBox("?", vbYesNo, "Question"), vbNo);
}

TEST_F(Dialogs, UnattendedTakesTheDefaultButton)
{
    dialogs::reset();
    EXPECT_EQ(MsgBox("?", vbOKCancel + vbDefaultButton2), vbCancel);
    EXPECT_EQ(MsgBox("?", vbRetryCancel), vbRetry);
    // A default past the last button falls back to the first.
    EXPECT_EQ(MsgBox("?", vbYesNo + vbDefaultButton3), vbYes);
    EXPECT_EQ(InputBox("?", "", "given"), "given");
    ASSERT_EQ(dialogs::transcript().size(), 4u);
    EXPECT_EQ(dialogs::transcript()[0].kind, "MsgBox");
    EXPECT_EQ(dialogs::transcript()[3].kind, "InputBox");
}

// Runs `act` on the modal box once it is up.
void whenshown(std::function<void(QWidget*)> act)
{
    auto* timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [timer, act] {
        if (QWidget* box = QApplication::activeModalWidget()) {
            timer->stop();
            timer->deleteLater();
            act(box);
        }
    });
    timer->start(10);
}

void escape(QWidget* box)
{
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(box, &key);
}

TEST_F(Dialogs, ShownAsQtBoxesWithTheirButtonsIconAndDefault)
{
    dialogs::setunattended(false);
    dialogs::reset();
    whenshown([](QWidget* w) {
        auto* box = qobject_cast<QMessageBox*>(w);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), "Transfer Local Data");
        EXPECT_EQ(box->text(), QString::fromLatin1("Caf\xe9 data?"));
        EXPECT_EQ(box->icon(), QMessageBox::Warning);
        EXPECT_EQ(box->standardButtons(), QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::No));
        box->button(QMessageBox::Yes)->click();
    });
    EXPECT_EQ(MsgBox("Caf\xe9 data?", vbYesNoCancel + vbExclamation + vbDefaultButton2, "Transfer Local Data"), vbYes);

    // Closed with Escape: Cancel where there is one, else the default button.
    whenshown(escape);
    EXPECT_EQ(MsgBox("?", vbRetryCancel + vbCritical), vbCancel);
    whenshown(escape);
    EXPECT_EQ(MsgBox("?", vbYesNo + vbDefaultButton2), vbNo);

    whenshown([](QWidget* w) {
        auto* box = qobject_cast<QInputDialog*>(w);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->textValue(), "old");
        box->setTextValue(QString::fromLatin1("Vexal \xc5sa"));
        box->accept();
    });
    EXPECT_EQ(InputBox("Name?", "Company Name", "old"), "Vexal \xc5sa");
    whenshown([](QWidget* w) { qobject_cast<QDialog*>(w)->reject(); });
    EXPECT_EQ(InputBox("Name?", "Company Name", "old"), "");
    ASSERT_EQ(dialogs::transcript().size(), 5u);
    EXPECT_EQ(dialogs::transcript()[2].answer, "No");
}

}  // namespace
