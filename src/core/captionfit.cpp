#include "core/captionfit.h"

#include <QEvent>
#include <QFontMetrics>
#include <QVariant>
#include <algorithm>

namespace {

// Keeps each caption's own font in a property; fits it on a resize, and takes a font given
// from outside as its own.
class CaptionFitter : public QObject {
public:
    static CaptionFitter& get()
    {
        static CaptionFitter* fitter = new CaptionFitter;
        return *fitter;
    }

    static QFont own(const QLabel& c)
    {
        const QVariant v = c.property(ownfont);
        return v.isValid() ? v.value<QFont>() : c.font();
    }

    static void setown(QLabel& c, const QFont& f)
    {
        c.setProperty(ownfont, f);
        fit(c);
    }

    static void fit(QLabel& c)
    {
        if (c.property(fitting).toBool()) return;
        c.setProperty(fitting, true);
        const QFont mine = own(c);
        QFont f = mine;
        const int room = c.contentsRect().width() - 2 * c.margin() - 2;
        const qreal least = mine.pointSizeF() * 2 / 3;
        if (!c.wordWrap() && room > 0 && !c.text().isEmpty() && mine.pointSizeF() > 0) {
            const int needed = QFontMetrics(mine).horizontalAdvance(c.text());
            if (needed > room) {
                qreal size = std::max(mine.pointSizeF() * room / needed, least);
                f.setPointSizeF(size);
                while (size - 0.25 >= least && QFontMetrics(f).horizontalAdvance(c.text()) > room) {
                    size -= 0.25;
                    f.setPointSizeF(size);
                }
            }
        }
        if (f != c.font()) c.setFont(f);
        c.setProperty(fitting, false);
    }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* c = static_cast<QLabel*>(object);
        if (event->type() == QEvent::Resize) fit(*c);
        else if (event->type() == QEvent::FontChange && !c->property(fitting).toBool()) setown(*c, c->font());
        return false;
    }

private:
    static constexpr const char* ownfont = "vexalownfont";
    static constexpr const char* fitting = "vexalfitting";
};

}  // namespace

void watchcaption(QLabel& caption)
{
    CaptionFitter::setown(caption, caption.font());
    caption.installEventFilter(&CaptionFitter::get());
}

void fitcaption(QLabel& caption) { CaptionFitter::fit(caption); }

QFont captionfont(const QLabel& caption) { return CaptionFitter::own(caption); }
