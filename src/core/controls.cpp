#include "core/controls.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QSignalBlocker>

#include "core/captionfit.h"
#include "core/imagelists.h"
#include "runtime/fault.h"

#include <cstring>
#include "core/runtimeerror.h"

int twips(int units)
{
    double dpi = 96.0;
    if (auto screen = QGuiApplication::primaryScreen()) dpi = screen->logicalDotsPerInch();
    return (int)(units * dpi / 1440.0 + (units >= 0 ? 0.5 : -0.5));
}

void adopt(QWidget& control, QWidget* screen, const char* name, int index)
{
    control.setParent(screen);
    control.setObjectName(index < 0 ? QString(name) : QString("%1(%2)").arg(name).arg(index));
}

void place(QWidget& w, QWidget* screen, const char* name, int index, int left, int top, int width, int height)
{
    adopt(w, screen, name, index);
    w.setGeometry(twips(left), twips(top), twips(width), twips(height));
}

void place(QWidget& w, QWidget* screen, const char* name, int left, int top, int width, int height)
{
    place(w, screen, name, -1, left, top, width, height);
}

// ---- ListBox -------------------------------------------------------------------------

namespace {
ListBox::Observer& observer()
{
    static ListBox::Observer o;
    return o;
}
}  // namespace

ListBox::ListBox(QWidget* parent) : QListWidget(parent) {}

void ListBox::additem(const std::string& text)
{
    addItem(QString::fromLatin1(text.data(), (qsizetype)text.size()));
    setCurrentRow(count() - 1);
    if (observer()) observer()(*this, text);
}

void ListBox::removeitem(int index)
{
    if (index < 0 || index >= count()) raisefault(fault::invalidcall);
    delete takeItem(index);
}

std::string ListBox::list(int index) const
{
    if (index < 0 || index >= count()) return {};
    return QListWidget::item(index)->text().toLatin1().toStdString();
}

void ListBox::setlistindex(int index)
{
    if (index < -1 || index >= count()) raisefault(fault::invalidcall);
    setCurrentRow(index);
}

void ListBox::setobserver(Observer o) { observer() = std::move(o); }

void ListBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    QListWidget::mouseDoubleClickEvent(event);
    emit doubleclicked();
}

// ---- Caption -------------------------------------------------------------------------

Caption::Caption(QWidget* parent, const std::string& text) : QLabel(parent)
{
    watchcaption(*this);
    setcaption(text);
    setAutoFillBackground(false);
}

void Caption::setcaption(const std::string& text)
{
    setText(QString::fromLatin1(text.data(), (qsizetype)text.size()));
    fitcaption(*this);
}

std::string Caption::caption() const { return text().toLatin1().toStdString(); }

void Caption::setforecolor(const QColor& c)
{
    QPalette p = palette();
    p.setColor(QPalette::WindowText, c);
    setPalette(p);
}

QColor Caption::forecolor() const { return palette().color(QPalette::WindowText); }

void Caption::setbold(bool on)
{
    QFont f = captionfont(*this);
    f.setBold(on);
    setFont(f);
}

bool Caption::bold() const { return captionfont(*this).bold(); }

void Caption::mousePressEvent(QMouseEvent* event)
{
    QLabel::mousePressEvent(event);
    if (event->button() == Qt::LeftButton) emit clicked();
}

// ---- PictureBox ----------------------------------------------------------------------

PictureBox::PictureBox(QWidget* parent) : QLabel(parent) { setAlignment(Qt::AlignCenter); }

void PictureBox::setpicture(const ImageList& list, int index)
{
    setPixmap(list.picture(index));
    list_ = list.name();
    index_ = index;
}

void PictureBox::mousePressEvent(QMouseEvent* event)
{
    QLabel::mousePressEvent(event);
    if (event->button() == Qt::LeftButton) emit clicked();
}

// ---- Shape ---------------------------------------------------------------------------

Shape::Shape(QWidget* parent) : QFrame(parent)
{
    setFrameShape(QFrame::Box);
    setAutoFillBackground(true);
}

void Shape::setfillcolor(const QColor& c)
{
    QPalette p = palette();
    p.setColor(QPalette::Window, c);
    setPalette(p);
}

QColor Shape::fillcolor() const { return palette().color(QPalette::Window); }

// ---- TextBox -------------------------------------------------------------------------

TextBox::TextBox(QWidget* parent) : QLineEdit(parent) {}

namespace {
// An edit box takes text as a C string: whatever follows a NUL never reaches it.
QString boxtext(const std::string& text)
{
    return QString::fromLatin1(text.c_str(), (qsizetype)std::strlen(text.c_str()));
}
}  // namespace

void TextBox::settext(const std::string& text) { setText(boxtext(text)); }

std::string TextBox::value() const { return text().toLatin1().toStdString(); }

void TextBox::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // Only a move to another control of the program counts; a window or menu that comes
    // up in front leaves the focus where it was.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) emit lostfocus();
}

// ---- ComboBox ------------------------------------------------------------------------

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    connect(this, qOverload<int>(&QComboBox::activated), this, guard([this] { emit clicked(); }));
    connect(this, &QComboBox::editTextChanged, this, guard([this] { emit changed(); }));
}

void ComboBox::additem(const std::string& text)
{
    // Adding a row leaves the text as it was; the first row of an empty list must not pass
    // through it on the way, or a change of text is seen that never happened.
    const QString keep = currentText();
    const QSignalBlocker quiet(this);
    addItem(QString::fromLatin1(text.data(), (qsizetype)text.size()));
    setEditText(keep);
}

std::string ComboBox::list(int index) const
{
    if (index < 0 || index >= count()) return {};
    return itemText(index).toLatin1().toStdString();
}

void ComboBox::settext(const std::string& text) { setEditText(boxtext(text)); }

std::string ComboBox::text() const { return currentText().toLatin1().toStdString(); }

void ComboBox::focusOutEvent(QFocusEvent* event)
{
    QComboBox::focusOutEvent(event);
    emit lostfocus();
}
