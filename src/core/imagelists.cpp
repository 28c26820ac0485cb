#include "core/imagelists.h"

#include <QPainter>
#include <QPainterPath>

#include "runtime/fault.h"

ImageList::ImageList(std::string name, std::vector<QPixmap> pictures)
    : name_(std::move(name)), pictures_(std::move(pictures))
{
}

const QPixmap& ImageList::picture(int index) const
{
    if (index < 1 || index > count()) throw Fault(35600, "Index out of bounds");
    return pictures_[index - 1];
}

namespace {

constexpr int iconsize = 32;
constexpr int listsize = 20;

// A colour of its own for each number of a list.
QColor huefor(int index, bool grey)
{
    QColor c = QColor::fromHsv((index * 360 / listsize) % 360, 200, 230);
    if (grey) {
        int level = 60 + (index * 160 / listsize);
        c = QColor(level, level, level);
    }
    return c;
}

QPixmap canvas()
{
    QPixmap p(iconsize, iconsize);
    p.fill(Qt::transparent);
    return p;
}

void drawnumber(QPainter& painter, int index, const QColor& ink)
{
    painter.setPen(ink);
    QFont f = painter.font();
    f.setPixelSize(12);
    f.setBold(true);
    painter.setFont(f);
    painter.drawText(QRect(0, 0, iconsize, iconsize), Qt::AlignCenter, QString::number(index));
}

// A button face: rounded square in the list's colour with its number.
QPixmap buttonicon(int index, bool grey)
{
    QPixmap p = canvas();
    QPainter painter(&p);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(huefor(index, grey));
    painter.setPen(QPen(grey ? QColor(96, 96, 96) : QColor(0, 0, 0), 2));
    painter.drawRoundedRect(QRectF(2, 2, iconsize - 4, iconsize - 4), 6, 6);
    drawnumber(painter, index, grey ? QColor(224, 224, 224) : QColor(0, 0, 0));
    return p;
}

// A ball: 1 is empty (an outline), every other number a filled ball of its own colour;
// 3, the filled progress ball, is green.
QPixmap ball(int index)
{
    QPixmap p = canvas();
    QPainter painter(&p);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(64, 64, 64), 2));
    if (index == 1) painter.setBrush(Qt::white);
    else if (index == 3) painter.setBrush(QColor(0, 192, 0));
    else painter.setBrush(huefor(index, false));
    painter.drawEllipse(QRectF(3, 3, iconsize - 6, iconsize - 6));
    if (index != 1 && index != 3) drawnumber(painter, index, QColor(0, 0, 0));
    return p;
}

// A screen icon or a miscellaneous picture: a diamond with its number.
QPixmap diamond(int index)
{
    QPixmap p = canvas();
    QPainter painter(&p);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.moveTo(iconsize / 2.0, 1);
    path.lineTo(iconsize - 1, iconsize / 2.0);
    path.lineTo(iconsize / 2.0, iconsize - 1);
    path.lineTo(1, iconsize / 2.0);
    path.closeSubpath();
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(huefor(index, false));
    painter.drawPath(path);
    drawnumber(painter, index, QColor(0, 0, 0));
    return p;
}

template <typename Draw>
ImageList makelist(const char* name, Draw draw)
{
    std::vector<QPixmap> pictures;
    for (int i = 1; i <= listsize; ++i) pictures.push_back(draw(i));
    return ImageList(name, std::move(pictures));
}

}  // namespace

const ImageList& ColorIcons()
{
    static const ImageList list = makelist("ColorIcons", [](int i) { return buttonicon(i, false); });
    return list;
}

const ImageList& GreyIcons()
{
    static const ImageList list = makelist("GreyIcons", [](int i) { return buttonicon(i, true); });
    return list;
}

const ImageList& Balls()
{
    static const ImageList list = makelist("Balls", ball);
    return list;
}

const ImageList& MiscIcons()
{
    static const ImageList list = makelist("MiscIcons", diamond);
    return list;
}

const ImageList& FormIcons()
{
    static const ImageList list = makelist("FormIcons", [](int i) {
        QPixmap p = diamond(i);
        QPainter painter(&p);
        painter.setPen(QPen(Qt::white, 2));
        painter.drawRect(QRect(0, 0, iconsize - 1, iconsize - 1));
        return p;
    });
    return list;
}
