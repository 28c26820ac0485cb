#include "core/imagelists.h"

#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QtMath>

#include <functional>

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

// Colours of a button face. The greyed twin of a button keeps its drawing and turns every
// colour into a flattened grey, so a disabled button still shows what it is.
struct Ink {
    bool grey = false;
    QColor operator()(const QColor& c) const
    {
        if (!grey) return c;
        const int v = 110 + qGray(c.rgb()) * 110 / 255;
        return QColor(v, v, v, c.alpha());
    }
    QColor outline() const { return (*this)(QColor(50, 50, 50)); }
};

using Drawing = std::function<void(QPainter&, const Ink&)>;

QPixmap paint(const Drawing& draw, const Ink& ink = {})
{
    QPixmap p(iconsize, iconsize);
    p.fill(Qt::transparent);
    QPainter painter(&p);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter, ink);
    return p;
}

QPen line(const QColor& c, qreal width)
{
    return QPen(c, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void disc(QPainter& p, const Ink& ink, const QColor& fill)
{
    p.setPen(QPen(ink(fill.darker(160)), 1.5));
    p.setBrush(ink(fill));
    p.drawEllipse(QRectF(2, 2, 28, 28));
}

QPainterPath polygon(std::initializer_list<QPointF> points)
{
    QPainterPath path;
    bool first = true;
    for (const QPointF& pt : points) {
        if (first) path.moveTo(pt);
        else path.lineTo(pt);
        first = false;
    }
    path.closeSubpath();
    return path;
}

void shape(QPainter& p, const Ink& ink, const QPainterPath& path, const QColor& fill)
{
    p.setPen(QPen(ink.outline(), 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(ink(fill));
    p.drawPath(path);
}

// A star (points > 0) or a regular polygon (points < 0) around the middle.
QPainterPath figure(int points, qreal outer, qreal inner)
{
    QPainterPath path;
    const int corners = points > 0 ? points * 2 : -points;
    for (int k = 0; k < corners; ++k) {
        const qreal r = points > 0 && k % 2 ? inner : outer;
        const qreal a = -M_PI / 2 + k * 2 * M_PI / corners;
        const QPointF pt(16 + r * std::cos(a), 16 + r * std::sin(a));
        if (k == 0) path.moveTo(pt);
        else path.lineTo(pt);
    }
    path.closeSubpath();
    return path;
}

// ---- Buttons (ColorIcons and GreyIcons share these) ----

void cross(QPainter& p, const Ink& ink)
{
    disc(p, ink, QColor(214, 40, 40));
    p.setPen(line(ink(Qt::white), 4));
    p.drawLine(QPointF(10.5, 10.5), QPointF(21.5, 21.5));
    p.drawLine(QPointF(21.5, 10.5), QPointF(10.5, 21.5));
}

void tick(QPainter& p, const Ink& ink)
{
    disc(p, ink, QColor(46, 164, 64));
    p.setPen(line(ink(Qt::white), 4));
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({QPointF(8.5, 16.5), QPointF(14, 22), QPointF(23.5, 10.5)}));
}

void server(QPainter& p, const Ink& ink, const QRectF& r)
{
    shape(p, ink, [&] { QPainterPath s; s.addRoundedRect(r, 2, 2); return s; }(), QColor(96, 110, 132));
    p.setPen(line(ink(QColor(200, 210, 225)), 1.5));
    for (qreal y = r.top() + 5; y < r.bottom() - 6; y += 5) p.drawLine(QPointF(r.left() + 2.5, y), QPointF(r.right() - 2.5, y));
    p.setPen(Qt::NoPen);
    p.setBrush(ink(QColor(80, 230, 90)));
    p.drawEllipse(QPointF(r.center().x(), r.bottom() - 3.5), 1.5, 1.5);
}

void arrowright(QPainter& p, const Ink& ink, qreal x0, qreal x1, qreal y, const QColor& fill)
{
    shape(p, ink, polygon({{x0, y - 3.5}, {x1 - 7, y - 3.5}, {x1 - 7, y - 8}, {x1, y}, {x1 - 7, y + 8},
                           {x1 - 7, y + 3.5}, {x0, y + 3.5}}), fill);
}

void arrowup(QPainter& p, const Ink& ink, qreal x, qreal y0, qreal y1, const QColor& fill)
{
    shape(p, ink, polygon({{x - 3.5, y0}, {x - 3.5, y1 + 7}, {x - 8, y1 + 7}, {x, y1}, {x + 8, y1 + 7},
                           {x + 3.5, y1 + 7}, {x + 3.5, y0}}), fill);
}

void transfer(QPainter& p, const Ink& ink)
{
    server(p, ink, QRectF(19, 3, 11, 26));
    arrowright(p, ink, 1.5, 18, 16, QColor(30, 110, 220));
}

void book(QPainter& p, const Ink& ink)
{
    shape(p, ink, polygon({{2, 7}, {16, 9}, {30, 7}, {30, 27}, {16, 29}, {2, 27}}), QColor(40, 90, 170));
    QPainterPath left;
    left.moveTo(16, 9);
    left.cubicTo(12, 5, 7, 5, 4, 5.5);
    left.lineTo(4, 25);
    left.cubicTo(8, 24.5, 12, 25, 16, 27.5);
    left.closeSubpath();
    QTransform mirror(-1, 0, 0, 1, 32, 0);
    shape(p, ink, left, Qt::white);
    shape(p, ink, mirror.map(left), Qt::white);
    p.setPen(line(ink(QColor(150, 160, 180)), 1));
    for (qreal y = 11; y <= 21; y += 3.5) {
        p.drawLine(QPointF(6.5, y - 1), QPointF(13.5, y + 0.5));
        p.drawLine(QPointF(25.5, y - 1), QPointF(18.5, y + 0.5));
    }
}

void folder(QPainter& p, const Ink& ink)
{
    shape(p, ink, polygon({{2, 7}, {11, 7}, {14, 10}, {28, 10}, {28, 26}, {2, 26}}), QColor(214, 160, 40));
    shape(p, ink, polygon({{2, 26}, {6, 14}, {31, 14}, {28, 26}}), QColor(250, 205, 80));
}

void checkscanner(QPainter& p, const Ink& ink)
{
    p.setPen(Qt::NoPen);
    p.setBrush(ink(Qt::white));
    p.drawRect(QRectF(2, 4, 22, 17));
    p.setBrush(ink(Qt::black));
    const qreal bars[][2] = {{3, 1.5}, {5.5, 1}, {7.5, 2.5}, {11, 1}, {13, 1.5}, {16, 2.5}, {19.5, 1}, {21.5, 1.5}};
    for (const auto& b : bars) p.drawRect(QRectF(b[0], 5, b[1], 15));
    p.setPen(line(ink(QColor(70, 50, 30)), 4.5));
    p.drawLine(QPointF(24, 23), QPointF(29.5, 28.5));
    p.setPen(QPen(ink(QColor(30, 110, 220)), 2.5));
    p.setBrush(ink(QColor(150, 210, 255, 150)));
    p.drawEllipse(QPointF(19, 18), 6.5, 6.5);
}

void envelope(QPainter& p, const Ink& ink)
{
    shape(p, ink, polygon({{2, 7}, {30, 7}, {30, 25}, {2, 25}}), QColor(245, 240, 225));
    p.setPen(line(ink.outline(), 1.2));
    p.drawPolyline(QPolygonF({QPointF(2.5, 7.5), QPointF(16, 18), QPointF(29.5, 7.5)}));
}

void gear(QPainter& p, const Ink& ink)
{
    QPainterPath g;
    for (int k = 0; k < 8; ++k) {
        const qreal a = k * M_PI / 4;
        const qreal angles[] = {a - 0.30, a - 0.17, a + 0.17, a + 0.30};
        const qreal radii[] = {11, 14.5, 14.5, 11};
        for (int i = 0; i < 4; ++i) {
            const QPointF pt(16 + radii[i] * std::cos(angles[i]), 16 + radii[i] * std::sin(angles[i]));
            if (k == 0 && i == 0) g.moveTo(pt);
            else g.lineTo(pt);
        }
    }
    g.closeSubpath();
    g.addEllipse(QPointF(16, 16), 4.5, 4.5);
    g.setFillRule(Qt::OddEvenFill);
    shape(p, ink, g, QColor(120, 132, 150));
}

void floppy(QPainter& p, const Ink& ink)
{
    shape(p, ink, polygon({{3, 3}, {25, 3}, {29, 7}, {29, 29}, {3, 29}}), QColor(40, 80, 160));
    shape(p, ink, polygon({{8, 3}, {22, 3}, {22, 11}, {8, 11}}), QColor(200, 205, 215));
    shape(p, ink, polygon({{7, 17}, {25, 17}, {25, 29}, {7, 29}}), Qt::white);
}

void plus(QPainter& p, const Ink& ink)
{
    disc(p, ink, QColor(46, 164, 64));
    p.setPen(line(ink(Qt::white), 4.5));
    p.drawLine(QPointF(16, 8.5), QPointF(16, 23.5));
    p.drawLine(QPointF(8.5, 16), QPointF(23.5, 16));
}

void pencil(QPainter& p, const Ink& ink)
{
    p.setPen(line(ink(QColor(30, 110, 220)), 2));
    p.drawLine(QPointF(3, 29), QPointF(17, 29));
    p.save();
    p.translate(16, 15);
    p.rotate(-45);
    shape(p, ink, polygon({{-7, -4}, {9, -4}, {9, 4}, {-7, 4}}), QColor(245, 190, 40));
    shape(p, ink, polygon({{-7, -4}, {-14, 0}, {-7, 4}}), QColor(240, 215, 170));
    p.setPen(Qt::NoPen);
    p.setBrush(ink(QColor(40, 40, 40)));
    p.drawPath(polygon({{-11.5, -1.4}, {-14, 0}, {-11.5, 1.4}}));
    shape(p, ink, polygon({{9, -4}, {14, -4}, {14, 4}, {9, 4}}), QColor(235, 120, 140));
    p.restore();
}

void clock(QPainter& p, const Ink& ink)
{
    p.setPen(QPen(ink(QColor(40, 90, 170)), 3));
    p.setBrush(ink(Qt::white));
    p.drawEllipse(QRectF(3, 3, 26, 26));
    p.setPen(line(ink(QColor(60, 60, 60)), 1.5));
    for (int k = 0; k < 12; k += 3) {
        const qreal a = k * M_PI / 6;
        p.drawLine(QPointF(16 + 9 * std::sin(a), 16 - 9 * std::cos(a)), QPointF(16 + 11 * std::sin(a), 16 - 11 * std::cos(a)));
    }
    p.setPen(line(ink(Qt::black), 2.2));
    p.drawLine(QPointF(16, 16), QPointF(16, 8));
    p.drawLine(QPointF(16, 16), QPointF(21.5, 19));
    p.setPen(line(ink(QColor(214, 40, 40)), 1));
    p.drawLine(QPointF(16, 16), QPointF(11, 23));
}

void upload(QPainter& p, const Ink& ink)
{
    p.setPen(line(ink(QColor(90, 90, 90)), 1.5));
    for (qreal x = 8; x <= 24; x += 4) {
        p.drawLine(QPointF(x, 17), QPointF(x, 30));
    }
    shape(p, ink, [] { QPainterPath s; s.addRoundedRect(QRectF(5, 19, 22, 9), 1.5, 1.5); return s; }(),
          QColor(45, 45, 55));
    arrowup(p, ink, 16, 17, 2, QColor(46, 164, 64));
}

void star(QPainter& p, const Ink& ink) { shape(p, ink, figure(5, 14, 6), QColor(250, 200, 30)); }

void padlock(QPainter& p, const Ink& ink)
{
    p.setPen(line(ink(QColor(120, 120, 130)), 3.5));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(9, 3, 14, 16), 0, 180 * 16);
    p.drawLine(QPointF(9, 11), QPointF(9, 15));
    p.drawLine(QPointF(23, 11), QPointF(23, 15));
    shape(p, ink, [] { QPainterPath s; s.addRoundedRect(QRectF(5, 14, 22, 15), 2, 2); return s; }(),
          QColor(214, 160, 40));
    p.setPen(Qt::NoPen);
    p.setBrush(ink(QColor(60, 40, 10)));
    p.drawEllipse(QPointF(16, 20), 2, 2);
    p.drawRect(QRectF(15.2, 20, 1.6, 5));
}

void house(QPainter& p, const Ink& ink)
{
    shape(p, ink, polygon({{6, 15}, {26, 15}, {26, 29}, {6, 29}}), QColor(245, 230, 200));
    shape(p, ink, polygon({{2, 16}, {16, 3}, {30, 16}}), QColor(200, 60, 40));
    shape(p, ink, polygon({{13, 20}, {19, 20}, {19, 29}, {13, 29}}), QColor(130, 80, 40));
}

void flag(QPainter& p, const Ink& ink)
{
    p.setPen(line(ink(QColor(70, 70, 70)), 2.5));
    p.drawLine(QPointF(6, 3), QPointF(6, 30));
    QPainterPath f;
    f.moveTo(7, 4);
    f.cubicTo(13, 1, 19, 8, 28, 5);
    f.lineTo(28, 17);
    f.cubicTo(19, 20, 13, 13, 7, 16);
    f.closeSubpath();
    shape(p, ink, f, QColor(30, 110, 220));
}

void battery(QPainter& p, const Ink& ink)
{
    shape(p, ink, [] { QPainterPath s; s.addRoundedRect(QRectF(2, 9, 25, 14), 2, 2); return s; }(), Qt::white);
    shape(p, ink, polygon({{27, 13}, {30, 13}, {30, 19}, {27, 19}}), QColor(90, 90, 90));
    p.setPen(Qt::NoPen);
    p.setBrush(ink(QColor(46, 164, 64)));
    p.drawRect(QRectF(4, 11, 15, 10));
}

void calendar(QPainter& p, const Ink& ink)
{
    shape(p, ink, polygon({{3, 6}, {29, 6}, {29, 29}, {3, 29}}), Qt::white);
    shape(p, ink, polygon({{3, 6}, {29, 6}, {29, 12}, {3, 12}}), QColor(214, 40, 40));
    p.setPen(Qt::NoPen);
    p.setBrush(ink(QColor(90, 90, 90)));
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 4; ++c) p.drawRect(QRectF(6 + c * 5.5, 15 + r * 4.5, 3, 3));
    p.setPen(line(ink(QColor(60, 60, 60)), 2));
    p.drawLine(QPointF(10, 3), QPointF(10, 8));
    p.drawLine(QPointF(22, 3), QPointF(22, 8));
}

void person(QPainter& p, const Ink& ink)
{
    QPainterPath body;
    body.moveTo(4, 30);
    body.cubicTo(4, 19, 28, 19, 28, 30);
    body.closeSubpath();
    shape(p, ink, body, QColor(30, 110, 220));
    p.setPen(QPen(ink.outline(), 1.2));
    p.setBrush(ink(QColor(240, 195, 150)));
    p.drawEllipse(QPointF(16, 11), 6.5, 6.5);
}

// What each button shows. The numbers are the ones the screens quote: 1 delete, cancel,
// close and the fault light; 2 good, OK and undo; 3 transfer to the server (also leave a
// screen); 4 read (also help); 6 check scanner; 8 settings; 10 add; 11 update or add a
// record; 12 set the clock; 13 send software to a scanner. The rest are spare.
const Drawing buttons[listsize] = {cross, tick, transfer, book, folder, checkscanner, envelope, gear, floppy, plus,
                                   pencil, clock, upload, star, padlock, house, flag, battery, calendar, person};

// ---- Balls ----

void ballbody(QPainter& p, const QColor& colour)
{
    QRadialGradient shine(QPointF(12, 11), 17);
    shine.setColorAt(0, colour.lighter(150));
    shine.setColorAt(1, colour.darker(115));
    p.setPen(QPen(colour.darker(170), 1.5));
    p.setBrush(shine);
    p.drawEllipse(QRectF(3, 3, 26, 26));
}

// Balls: 1 empty, 2 half full, 3 full (green), 4 amber (the port under test blinks between
// 4 and 1), 5 red with a cross (nothing found), 6 to 12 the turning steps of a running
// automatic download, 13 grey (idle), 14 yellow (busy or no automatic), 16 blue (automatic
// switched off), 17 red with a bar (store location down); 15 and 18 to 20 are spare colours.
QPixmap ball(int index)
{
    return paint([index](QPainter& p, const Ink&) {
        const QColor green(40, 180, 60);
        switch (index) {
        case 1:
            p.setPen(QPen(QColor(110, 110, 110), 2));
            p.setBrush(QColor(250, 250, 250));
            p.drawEllipse(QRectF(3, 3, 26, 26));
            return;
        case 2:
            p.setPen(QPen(QColor(110, 110, 110), 2));
            p.setBrush(QColor(250, 250, 250));
            p.drawEllipse(QRectF(3, 3, 26, 26));
            p.setPen(Qt::NoPen);
            p.setBrush(green);
            p.drawChord(QRectF(4, 4, 24, 24), 180 * 16, 180 * 16);
            return;
        case 3: ballbody(p, green); return;
        case 4: ballbody(p, QColor(255, 170, 0)); return;
        case 5:
            ballbody(p, QColor(214, 30, 30));
            p.setPen(line(Qt::white, 3.5));
            p.drawLine(QPointF(11, 11), QPointF(21, 21));
            p.drawLine(QPointF(21, 11), QPointF(11, 21));
            return;
        case 13: ballbody(p, QColor(150, 150, 150)); return;
        case 14: ballbody(p, QColor(245, 220, 0)); return;
        case 15: ballbody(p, QColor(150, 60, 200)); return;
        case 16: ballbody(p, QColor(30, 100, 230)); return;
        case 17:
            ballbody(p, QColor(214, 30, 30));
            p.setPen(Qt::NoPen);
            p.setBrush(Qt::white);
            p.drawRoundedRect(QRectF(8, 13.5, 16, 5), 1.5, 1.5);
            return;
        case 18: ballbody(p, QColor(0, 190, 200)); return;
        case 19: ballbody(p, QColor(240, 100, 170)); return;
        case 20: ballbody(p, QColor(130, 85, 40)); return;
        default: {
            // 6 to 12: a white sector goes round a green ball, one seventh a step.
            ballbody(p, green);
            const int step = index - 6;
            p.setPen(Qt::NoPen);
            p.setBrush(QColor(255, 255, 255, 210));
            p.drawPie(QRectF(5, 5, 22, 22), (90 - step * 360 / 7) * 16, -(360 / 7) * 16);
            return;
        }
        }
    });
}

// ---- MiscIcons ----

void import(QPainter& p, const Ink& ink)
{
    shape(p, ink, polygon({{9, 2}, {23, 2}, {29, 8}, {29, 30}, {9, 30}}), Qt::white);
    p.setPen(line(ink(QColor(150, 160, 180)), 1.2));
    for (qreal y = 11; y <= 26; y += 3.5) p.drawLine(QPointF(16, y), QPointF(26, y));
    shape(p, ink, polygon({{2, 10}, {8, 10}, {8, 5}, {15, 13}, {8, 21}, {8, 16}, {2, 16}}), QColor(46, 164, 64));
}

void hourglass(QPainter& p, const Ink& ink)
{
    shape(p, ink, polygon({{8, 5}, {24, 5}, {17.5, 16}, {24, 27}, {8, 27}, {14.5, 16}}), QColor(215, 235, 250));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(235, 180, 40));
    p.drawPath(polygon({{11, 9}, {21, 9}, {16, 15}}));
    p.drawPath(polygon({{16, 20}, {22, 26}, {10, 26}}));
    shape(p, ink, polygon({{5, 2}, {27, 2}, {27, 5}, {5, 5}}), QColor(130, 80, 40));
    shape(p, ink, polygon({{5, 27}, {27, 27}, {27, 30}, {5, 30}}), QColor(130, 80, 40));
}

// Two arrows chasing each other round: a transfer under way.
void running(QPainter& p, const Ink& ink)
{
    const QColor colours[] = {QColor(30, 110, 220), QColor(46, 164, 64)};
    for (int half = 0; half < 2; ++half) {
        p.save();
        p.translate(16, 16);
        p.rotate(half * 180);
        QPainterPath arc;
        arc.arcMoveTo(QRectF(-12, -12, 24, 24), 200);
        arc.arcTo(QRectF(-12, -12, 24, 24), 200, -150);
        p.setPen(line(ink(colours[half]), 4));
        p.setBrush(Qt::NoBrush);
        p.drawPath(arc);
        const QPointF tip = arc.currentPosition();
        p.setPen(Qt::NoPen);
        p.setBrush(ink(colours[half]));
        p.translate(tip);
        p.rotate(40);  // along the arc where it ends
        p.drawPath(polygon({{-3, -6}, {6, 0}, {-3, 6}}));
        p.restore();
    }
}

void help(QPainter& p, const Ink& ink)
{
    disc(p, ink, QColor(30, 110, 220));
    QPainterPath q;
    q.moveTo(11.5, 12.5);
    q.cubicTo(11.5, 6, 21, 6, 20.5, 12);
    q.cubicTo(20.5, 15.5, 16, 15.5, 16, 19.5);
    p.setPen(line(ink(Qt::white), 3.5));
    p.setBrush(Qt::NoBrush);
    p.drawPath(q);
    p.setPen(Qt::NoPen);
    p.setBrush(ink(Qt::white));
    p.drawEllipse(QPointF(16, 24.5), 2.2, 2.2);
}

void lifering(QPainter& p, const Ink& ink)
{
    QPainterPath ring;
    ring.addEllipse(QPointF(16, 16), 14, 14);
    ring.addEllipse(QPointF(16, 16), 6.5, 6.5);
    ring.setFillRule(Qt::OddEvenFill);
    shape(p, ink, ring, Qt::white);
    p.setPen(Qt::NoPen);
    p.setBrush(ink(QColor(214, 40, 40)));
    for (int k = 0; k < 4; ++k) {
        QPainterPath band;
        band.moveTo(16, 16);
        band.arcTo(QRectF(2.6, 2.6, 26.8, 26.8), 20 + k * 90, 50);
        band.closeSubpath();
        p.drawPath(band.subtracted([] { QPainterPath h; h.addEllipse(QPointF(16, 16), 7, 7); return h; }()));
    }
}

// An open door with an arrow leaving: close, finish, cancel.
void leave(QPainter& p, const Ink& ink)
{
    shape(p, ink, polygon({{4, 3}, {20, 3}, {20, 29}, {4, 29}}), QColor(90, 60, 40));
    shape(p, ink, polygon({{4, 3}, {13, 6}, {13, 31}, {4, 29}}), QColor(190, 130, 70));
    arrowright(p, ink, 14, 31, 16, QColor(214, 40, 40));
}

// A spare picture: a star or polygon of its own colour.
QPixmap spare(int index)
{
    return paint([index](QPainter& p, const Ink& ink) {
        const QColor colour = QColor::fromHsv((index * 360 / listsize * 7) % 360, 170, 220);
        shape(p, ink, index % 2 ? figure(index / 2 + 1, 14, 7) : figure(-(index / 2 + 1), 14, 0), colour);
    });
}

// MiscIcons: 1 import to the history list, 2 busy, 3 transfer under way, 4 help, 5 support,
// 6 close or finish; 7 to 20 spare.
QPixmap misc(int index)
{
    const Drawing drawings[] = {import, hourglass, running, help, lifering, leave};
    if (index <= 6) return paint(drawings[index - 1]);
    return spare(index);
}

// ---- FormIcons: the three scanner types, then spare screen pictures ----

void beam(QPainter& p, qreal x, qreal y)
{
    p.setPen(line(QColor(230, 30, 30, 200), 1.5));
    p.drawLine(QPointF(x, y), QPointF(x - 2, y - 5));
    p.drawLine(QPointF(x, y), QPointF(x + 2, y - 5));
}

// 1 a scanner standing in its cradle (OPL 972x).
void cradle(QPainter& p, const Ink& ink)
{
    shape(p, ink, [] { QPainterPath s; s.addRoundedRect(QRectF(8, 4, 16, 22), 4, 4); return s; }(),
          QColor(60, 60, 70));
    shape(p, ink, [] { QPainterPath s; s.addRoundedRect(QRectF(11, 8, 10, 7), 1, 1); return s; }(),
          QColor(150, 200, 150));
    shape(p, ink, polygon({{3, 20}, {29, 20}, {27, 30}, {5, 30}}), QColor(120, 132, 150));
    p.setPen(Qt::NoPen);
    p.setBrush(ink(QColor(80, 230, 90)));
    p.drawEllipse(QPointF(23, 25), 1.5, 1.5);
}

// 2 a slim pen-shaped pocket scanner (OPN 2001).
void pocket(QPainter& p, const Ink& ink)
{
    shape(p, ink, [] { QPainterPath s; s.addRoundedRect(QRectF(11, 7, 10, 23), 4, 4); return s; }(),
          QColor(230, 230, 235));
    shape(p, ink, [] { QPainterPath s; s.addEllipse(QPointF(16, 19), 3, 3); return s; }(), QColor(30, 110, 220));
    beam(p, 16, 6);
}

// 3 a round key-fob scanner on its ring (CS 1504).
void keyfob(QPainter& p, const Ink& ink)
{
    p.setPen(QPen(ink(QColor(150, 150, 150)), 2));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(9, 24), 5, 5);
    shape(p, ink, [] { QPainterPath s; s.addRoundedRect(QRectF(12, 7, 16, 18), 7, 7); return s; }(),
          QColor(40, 40, 50));
    shape(p, ink, [] { QPainterPath s; s.addEllipse(QPointF(20, 17), 3, 3); return s; }(), QColor(240, 180, 40));
    beam(p, 20, 6);
}

QPixmap formicon(int index)
{
    const Drawing drawings[] = {cradle, pocket, keyfob};
    if (index <= 3) return paint(drawings[index - 1]);
    return paint([index](QPainter& p, const Ink& ink) {
        shape(p, ink, polygon({{2, 4}, {30, 4}, {30, 28}, {2, 28}}), Qt::white);
        shape(p, ink, polygon({{2, 4}, {30, 4}, {30, 9}, {2, 9}}), QColor(30, 110, 220));
        p.save();
        p.translate(16, 18.5);
        p.scale(0.55, 0.55);
        p.translate(-16, -16);
        const QColor colour = QColor::fromHsv((index * 360 / listsize * 7) % 360, 170, 220);
        shape(p, ink, index % 2 ? figure(index / 2, 14, 7) : figure(-(index / 2 + 1), 14, 0), colour);
        p.restore();
    });
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
    static const ImageList list = makelist("ColorIcons", [](int i) { return paint(buttons[i - 1]); });
    return list;
}

const ImageList& GreyIcons()
{
    static const ImageList list = makelist("GreyIcons", [](int i) { return paint(buttons[i - 1], Ink{true}); });
    return list;
}

const ImageList& Balls()
{
    static const ImageList list = makelist("Balls", ball);
    return list;
}

const ImageList& MiscIcons()
{
    static const ImageList list = makelist("MiscIcons", misc);
    return list;
}

const ImageList& FormIcons()
{
    static const ImageList list = makelist("FormIcons", formicon);
    return list;
}
