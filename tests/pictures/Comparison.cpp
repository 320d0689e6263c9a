#include "tests/pictures/Comparison.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

constexpr int kSlack = 4; // of 255, in each channel
constexpr double kChangedShare = 0.015;
constexpr double kForeignShare = 0.0005;

std::array<int, 3> channels(QRgb color)
{
    return {qRed(color), qGreen(color), qBlue(color)};
}

bool isChanged(QRgb left, QRgb right)
{
    const auto a = channels(left);
    const auto b = channels(right);
    return !std::equal(a.begin(), a.end(), b.begin(),
                       [](int one, int other) { return std::abs(one - other) <= kSlack; });
}

/// Returns whether `color` lies between the colours of `picture` at and around a place.
bool isBetween(QRgb color, const QImage& picture, int x, int y)
{
    std::array<int, 3> least = {255, 255, 255};
    std::array<int, 3> most = {0, 0, 0};
    for (int row = std::max(y - 1, 0); row <= std::min(y + 1, picture.height() - 1); ++row) {
        for (int column = std::max(x - 1, 0); column <= std::min(x + 1, picture.width() - 1);
             ++column) {
            const auto around = channels(picture.pixel(column, row));
            for (std::size_t at = 0; at < around.size(); ++at) {
                least.at(at) = std::min(least.at(at), around.at(at));
                most.at(at) = std::max(most.at(at), around.at(at));
            }
        }
    }
    const auto own = channels(color);
    for (std::size_t at = 0; at < own.size(); ++at) {
        if (own.at(at) < least.at(at) - kSlack || own.at(at) > most.at(at) + kSlack)
            return false;
    }
    return true;
}

} // namespace

bool PictureDifference::isNegligible() const
{
    const double pixels = static_cast<double>(marked.width()) * marked.height();
    return changed <= pixels * kChangedShare && foreign <= pixels * kForeignShare;
}

PictureDifference comparePictures(const QImage& seen, const QImage& reference)
{
    PictureDifference difference;
    const QImage left = seen.convertToFormat(QImage::Format_RGB32);
    const QImage right = reference.convertToFormat(QImage::Format_RGB32);
    difference.marked = QImage(left.size().expandedTo(right.size()), QImage::Format_RGB32);
    difference.marked.fill(Qt::red);
    if (left.size() != right.size()) {
        difference.changed = difference.foreign =
            difference.marked.width() * difference.marked.height();
        return difference;
    }
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const QRgb one = left.pixel(x, y);
            const QRgb other = right.pixel(x, y);
            if (!isChanged(one, other)) {
                difference.marked.setPixel(x, y, QColor(one).darker().rgb());
                continue;
            }
            ++difference.changed;
            if (!isBetween(one, right, x, y) || !isBetween(other, left, x, y))
                ++difference.foreign;
        }
    }
    return difference;
}
