// The image lists of the image list screen: ColorIcons, GreyIcons, Balls, MiscIcons and
// FormIcons. Routines quote a picture by list and number (from 1); the pictures are drawn
// here, each different from the others of its list, so the states they stand for can be
// told apart on screen and in tests.
#pragma once

#include <QPixmap>
#include <string>
#include <vector>

class ImageList {
public:
    ImageList(std::string name, std::vector<QPixmap> pictures);

    const std::string& name() const { return name_; }
    int count() const { return (int)pictures_.size(); }
    // Picture `index`, counted from 1; an index outside 1..count raises 35600.
    const QPixmap& picture(int index) const;

private:
    std::string name_;
    std::vector<QPixmap> pictures_;
};

// Buttons in colour, by number: 1 delete, 3 transfer, 4 read, 6 check, 8 settings ...
const ImageList& ColorIcons();
// The same buttons greyed, same numbers.
const ImageList& GreyIcons();
// Status balls: 1 empty, 3 filled, 4 and 5 port scan blink and miss, 6 to 17 the states of
// the Status picture.
const ImageList& Balls();
// Odd pictures: 3 a transfer in progress.
const ImageList& MiscIcons();
// Screen icons.
const ImageList& FormIcons();
