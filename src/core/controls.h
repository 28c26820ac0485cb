// The plain controls the screens are built from: list boxes, captions, pictures, shapes and
// text boxes, with the few properties the routines use. Strings cross into Qt as Latin-1.
#pragma once

#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <functional>
#include <string>

class ImageList;

// Layout units of the screens: 1/1440 inch, turned into pixels of the primary display.
int twips(int units);
// Puts a control on its screen under its name ("List2", "Shape1(3)"), so it can be found
// by name.
void adopt(QWidget& control, QWidget* screen, const char* name, int index = -1);
// Adopts a control and sets its place and size in layout units.
void place(QWidget& control, QWidget* screen, const char* name, int index, int left, int top, int width, int height);
void place(QWidget& control, QWidget* screen, const char* name, int left, int top, int width, int height);

// A list box. Adding a row always selects it, so the newest row is in view.
class ListBox : public QListWidget {
    Q_OBJECT
public:
    ListBox() : ListBox(nullptr) {}
    explicit ListBox(QWidget* parent);

    void additem(const std::string& text);
    void removeitem(int index);          // a row that is not there raises 5
    int listcount() const { return count(); }
    std::string list(int index) const;   // "" for a row that is not there
    int listindex() const { return currentRow(); }   // -1 when none is selected
    void setlistindex(int index);

    // Sees every row added to any list box, in order (the decoder tool and tests).
    using Observer = std::function<void(const ListBox&, const std::string&)>;
    static void setobserver(Observer observer);

signals:
    void doubleclicked();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
};

// A caption: text with a fore colour and weight, clickable.
class Caption : public QLabel {
    Q_OBJECT
public:
    Caption() : Caption(nullptr) {}
    explicit Caption(QWidget* parent, const std::string& text = "");

    void setcaption(const std::string& text);
    std::string caption() const;
    void setforecolor(const QColor& c);
    QColor forecolor() const;
    void setbold(bool on);
    bool bold() const;

signals:
    void clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
};

// A picture that shows an image of one of the image lists and remembers which.
class PictureBox : public QLabel {
    Q_OBJECT
public:
    PictureBox() : PictureBox(nullptr) {}
    explicit PictureBox(QWidget* parent);

    void setpicture(const ImageList& list, int index);
    std::string picturelist() const { return list_; }
    int pictureindex() const { return index_; }

signals:
    void clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    std::string list_;
    int index_ = 0;
};

// A filled panel or colour box.
class Shape : public QFrame {
    Q_OBJECT
public:
    Shape() : Shape(nullptr) {}
    explicit Shape(QWidget* parent);

    void setfillcolor(const QColor& c);
    QColor fillcolor() const;
};

// A one-line text box; the screens use hidden ones to hand values around.
class TextBox : public QLineEdit {
    Q_OBJECT
public:
    TextBox() : TextBox(nullptr) {}
    explicit TextBox(QWidget* parent);

    void settext(const std::string& text);   // up to its first NUL, as an edit box takes it
    std::string value() const;

signals:
    // The focus moved to another control (not to another window or a menu).
    void lostfocus();

protected:
    void focusOutEvent(QFocusEvent* event) override;
};

// A drop-down list whose text can also be typed (the port lists of the setup screen).
class ComboBox : public QComboBox {
    Q_OBJECT
public:
    ComboBox() : ComboBox(nullptr) {}
    explicit ComboBox(QWidget* parent);

    void additem(const std::string& text);
    void clearlist() { clear(); }
    int listcount() const { return count(); }
    std::string list(int index) const;   // "" for a row that is not there
    void settext(const std::string& text);   // up to its first NUL, as an edit box takes it
    std::string text() const;

signals:
    void clicked();        // a row was chosen from the list
    void changed();        // the text changed
    void lostfocus();

protected:
    void focusOutEvent(QFocusEvent* event) override;
};
