#include "tests/native/Grid.h"

#include "redeye/Classify.h"

ClassGrid::ClassGrid(const std::string& rows) {
    height = 1;
    for (const char c : rows) {
        if (c == '|') {
            ++height;
            width = 0;
            continue;
        }
        ++width;
        work.push_back(c == 'R' ? kClassRed : c == 'w' ? kClassWeakRed : kClassOther);
        work.push_back(0);
        work.push_back(0);
    }
}

std::string ClassGrid::Classes() const {
    std::string text;
    for (int32_t y = 0; y < height; ++y) {
        if (y > 0) text += '|';
        for (int32_t x = 0; x < width; ++x) text += ".Rw"[Class(x, y)];
    }
    return text;
}
