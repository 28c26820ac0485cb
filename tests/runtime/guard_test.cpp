// The slot wrapper: a fault thrown from a connected handler shows the runtime box and the
// program goes on; the handler gets the signal's arguments it asks for, and no more.
#include <QTimer>
#include <gtest/gtest.h>

#include "core/runtimeerror.h"
#include "platform/dialogs.h"
#include "runtime/fault.h"

namespace {

class Emitter : public QObject {
    Q_OBJECT
signals:
    void value(int n, const QString& text);
};

TEST(Guard, AFaultInASlotBecomesTheRuntimeBoxAndLaterSlotsStillRun)
{
    dialogs::reset();
    dialogs::setunattended(true);
    dialogs::cleartranscript();
    Emitter e;
    int seen = 0;
    QString text;
    QObject::connect(&e, &Emitter::value, &e, guard([](int n) {
        if (n == 53) throw Fault(53, "File not found");
    }));
    QObject::connect(&e, &Emitter::value, &e, guard([&](int n, const QString& t) { seen = n, text = t; }));
    QObject::connect(&e, &Emitter::value, &e, guard([&] { ++seen; }));
    emit e.value(53, "x");
    EXPECT_EQ(seen, 54);
    EXPECT_EQ(text, "x");
    ASSERT_EQ(dialogs::transcript().size(), 1u);
    EXPECT_EQ(dialogs::transcript()[0].title, "VEXAL Scanner Interface");
    EXPECT_EQ(dialogs::transcript()[0].text, "Run-time error '53':\r\n\r\nFile not found");
    emit e.value(1, "y");
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(dialogs::transcript().size(), 1u);
}

}  // namespace

#include "guard_test.moc"
