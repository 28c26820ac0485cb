#include "support/screengrab.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QSet>
#include <QThread>

namespace screengrab {

QString shotsdir() { return qEnvironmentVariable("VEXAL_SHOTS"); }

bool realdisplay() { return QGuiApplication::platformName() == "xcb"; }

QImage display(int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(5);
    }
    QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->grabWindow(0).toImage() : QImage();
}

QRect framed(const QWidget& window) { return window.frameGeometry(); }

QImage row(const std::vector<QImage>& parts, int gap)
{
    int width = 0, height = 0;
    for (const QImage& p : parts) {
        width += p.width() + (width > 0 ? gap : 0);
        height = std::max(height, p.height());
    }
    QImage out(std::max(width, 1), std::max(height, 1), QImage::Format_RGB32);
    out.fill(QColor(80, 80, 80));
    QPainter painter(&out);
    int x = 0;
    for (const QImage& p : parts) {
        painter.drawImage(x, 0, p);
        x += p.width() + gap;
    }
    return out;
}

QImage enlarged(const QImage& image, int times)
{
    return image.scaled(image.size() * times, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

bool save(const QImage& image, const char* name)
{
    const QString dir = shotsdir();
    QDir().mkpath(dir);
    return image.save(dir + "/" + name + ".png");
}

int colours(const QImage& image)
{
    QSet<QRgb> seen;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2) seen.insert(image.pixel(x, y));
    return seen.size();
}

}  // namespace screengrab
