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
    answering("Company Name | your company => Vexal Ltd\n");
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

}  // namespace
