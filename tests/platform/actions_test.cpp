// The unattended actions player: the file's lines, and events played on real controls once
// their screen is shown and they are enabled.
#include <QAction>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <gtest/gtest.h>

#include "core/controls.h"
#include "platform/actions.h"
#include "platform/dialogs.h"
#include "support/tempinstall.h"

namespace {

TEST(ActionsFile, LinesReadAndRefused)
{
    std::vector<std::string> errors;
    auto list = actions::parse("# a batch transfer\r\n"
                               "Form1.List1 dblclick 2   # the outstanding row\r\n"
                               "\r\n"
                               "wait 1.5\n"
                               "Form18.HelpLabel(0) CLICK\n"
                               "Form9.mnuTransfer click\n"
                               "Form1 click\n"
                               "Form1.Transfer press\n"
                               "Form1.List1 dblclick -1\n"
                               "Form1.List1 dblclick 1 2\n"
                               "wait soon\n",
                               errors);
    ASSERT_EQ(list.size(), 4u);
    EXPECT_EQ(list[0].line, 2);
    EXPECT_EQ(list[0].screen, "Form1");
    EXPECT_EQ(list[0].control, "List1");
    EXPECT_EQ(list[0].event, "dblclick");
    EXPECT_EQ(list[0].argument, 2);
    EXPECT_EQ(list[0].text, "Form1.List1 dblclick 2");
    EXPECT_TRUE(list[1].screen.empty());
    EXPECT_DOUBLE_EQ(list[1].wait, 1.5);
    EXPECT_EQ(list[2].control, "HelpLabel(0)");
    EXPECT_EQ(list[2].event, "click");
    EXPECT_EQ(list[2].argument, -1);
    EXPECT_EQ(list[3].screen, "Form9");
    ASSERT_EQ(errors.size(), 5u);
    EXPECT_EQ(errors[0], "line 7 \"Form1 click\": expected Screen.Control event [argument] or wait SECONDS");
    EXPECT_EQ(errors[1], "line 8 \"Form1.Transfer press\": the event is click or dblclick");
    EXPECT_EQ(errors[2], "line 9 \"Form1.List1 dblclick -1\": the argument is one row number from 0");
    EXPECT_EQ(errors[3], "line 10 \"Form1.List1 dblclick 1 2\": the argument is one row number from 0");
    EXPECT_EQ(errors[4], "line 11 \"wait soon\": a wait takes one number of seconds");
}

// A screen with a list, an array caption and a button-less picture, and a monitor form with
// a menu entry, as the program builds them.
struct Player : ::testing::Test {
    QWidget screen, monitor;
    ListBox List1;
    Caption Label[2];
    QAction mnuTransfer{"&Transfer Batch"};
    std::vector<std::string> fired;

    void SetUp() override
    {
        dialogs::cleartranscript();
        screen.setObjectName("FormT");
        monitor.setObjectName("Form9");
        adopt(List1, &screen, "List1");
        for (int i = 0; i < 2; ++i) adopt(Label[i], &screen, "Label", i);
        mnuTransfer.setParent(&monitor);
        mnuTransfer.setObjectName("mnuTransfer");
        for (const char* row : {"first", "second", "third"}) List1.additem(row);
        QObject::connect(&List1, &ListBox::doubleclicked,
                         [this] { fired.push_back("List1 dblclick " + List1.list(List1.listindex())); });
        QObject::connect(&Label[1], &Caption::clicked, [this] { fired.push_back("Label(1) click"); });
        QObject::connect(&mnuTransfer, &QAction::triggered, [this] { fired.push_back("mnuTransfer"); });
    }
    void TearDown() override
    {
        actions::stop();
        actions::settimeout(60000);
        dialogs::cleartranscript();
    }

    void play(const std::string& text)
    {
        std::vector<std::string> errors;
        actions::play(actions::parse(text, errors));
        ASSERT_TRUE(errors.empty());
    }
    // Lets events run until the player is done or `ms` have passed.
    void run(int ms)
    {
        QElapsedTimer t;
        t.start();
        while (actions::playing() && t.elapsed() < ms) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QCoreApplication::processEvents();
    }
    std::vector<std::string> transcript()
    {
        std::vector<std::string> out;
        for (const auto& e : dialogs::transcript()) out.push_back(dialogs::describe(e));
        return out;
    }
};

TEST_F(Player, WaitsForTheScreenAndTheControlThenFiresInOrder)
{
    Label[1].setEnabled(false);
    play("FormT.List1 dblclick 1\nFormT.Label(1) click\nForm9.mnuTransfer click\n");
    run(300);
    EXPECT_TRUE(fired.empty()) << "the screen is not shown yet";
    screen.show();
    run(300);
    EXPECT_EQ(fired, (std::vector<std::string>{"List1 dblclick second"}));
    Label[1].setEnabled(true);
    run(2000);
    EXPECT_FALSE(actions::playing());
    EXPECT_EQ(fired, (std::vector<std::string>{"List1 dblclick second", "Label(1) click", "mnuTransfer"}));
    EXPECT_EQ(transcript(), (std::vector<std::string>{"Action \"FormT.List1 dblclick 1\" => fired",
                                                      "Action \"FormT.Label(1) click\" => fired",
                                                      "Action \"Form9.mnuTransfer click\" => fired"}));
}

TEST_F(Player, AListsClickChoosesTheRowAndClicksIt)
{
    QObject::connect(&List1, &QListWidget::itemClicked,
                     [this](QListWidgetItem* row) { fired.push_back("List1 click " + row->text().toStdString()); });
    screen.show();
    play("FormT.List1 click 2\n");
    run(2000);
    EXPECT_EQ(fired, std::vector<std::string>{"List1 click third"});
    EXPECT_EQ(List1.listindex(), 2);
}

TEST_F(Player, StopsAndSaysSoWhenAControlIsNeverReady)
{
    actions::settimeout(300);
    screen.show();
    play("FormT.Label(5) click\nFormT.Label(1) click\n");
    run(2000);
    EXPECT_FALSE(actions::playing());
    EXPECT_TRUE(fired.empty()) << "nothing after the line that was not reached";
    ASSERT_EQ(transcript().size(), 1u);
    EXPECT_EQ(transcript()[0], "Action \"FormT.Label(5) click\" => not reached: FormT was not shown with "
                               "Label(5) enabled within 0 s; the actions stop here");
}

TEST_F(Player, ARowThatIsNotThereIsRefusedAndAWaitWaits)
{
    screen.show();
    play("wait 0.4\nFormT.List1 dblclick 7\n");
    QElapsedTimer t;
    t.start();
    run(3000);
    EXPECT_GE(t.elapsed(), 400);
    EXPECT_TRUE(fired.empty());
    EXPECT_EQ(transcript().back(), "Action \"FormT.List1 dblclick 7\" => refused: the list has no row 7");
}

TEST(ActionsStart, AFileWithABadLinePlaysNothing)
{
    TempInstall t;
    TempInstall::writefile(t.root() + "/actions.txt", "Form9.mnuExit click\nForm9.mnuExit clack\n");
    t.configure("[dialogs]\nactions=actions.txt\n");
    dialogs::reset();
    dialogs::cleartranscript();
    actions::start();
    EXPECT_FALSE(actions::playing());
    ASSERT_EQ(dialogs::transcript().size(), 1u);
    EXPECT_EQ(dialogs::transcript()[0].answer,
              "not played: line 2 \"Form9.mnuExit clack\": the event is click or dblclick");
    dialogs::cleartranscript();
}

}  // namespace
