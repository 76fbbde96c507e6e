#include "Sheet.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace {

// A colour is counted by the upper five bits of its three parts.
constexpr int kBits = 5;
constexpr std::size_t kCells = std::size_t(1) << (3 * kBits);
constexpr std::size_t kColours = 256;

struct Counted {
    std::array<int, 3> parts; // red, green, blue, 0 to 255
    std::int64_t pixels;
    std::size_t cell;
};

std::size_t CellOf(QRgb colour)
{
    constexpr int kShift = 8 - kBits;
    return std::size_t(qRed(colour) >> kShift) << (2 * kBits) |
           std::size_t(qGreen(colour) >> kShift) << kBits | std::size_t(qBlue(colour) >> kShift);
}

// A stretch of the counted colours that will share one entry.
struct Box {
    std::size_t from, to;
    int widest = 0;          // of red, green, blue
    std::int64_t weight = 0; // how much it would gain by a cut
};

Box Measured(const std::vector<Counted> &colours, std::size_t from, std::size_t to)
{
    Box box{ from, to };
    std::int64_t pixels = 0;
    std::array<int, 3> least{ 255, 255, 255 }, most{ 0, 0, 0 };
    for (std::size_t index = from; index < to; ++index) {
        pixels += colours[index].pixels;
        for (std::size_t part = 0; part < 3; ++part) {
            least[part] = std::min(least[part], colours[index].parts[part]);
            most[part] = std::max(most[part], colours[index].parts[part]);
        }
    }
    int width = 0;
    for (int part = 0; part < 3; ++part) {
        if (most[std::size_t(part)] - least[std::size_t(part)] > width) {
            width = most[std::size_t(part)] - least[std::size_t(part)];
            box.widest = part;
        }
    }
    // Rare colours of their own, such as a red mouth, are wanted as well as common ones.
    box.weight = std::int64_t(width) * width * std::int64_t(std::min<std::int64_t>(pixels, 20000));
    return box;
}

} // namespace

QImage InFewColours(const QImage &image)
{
    std::vector<std::array<std::int64_t, 4>> sums(kCells, { 0, 0, 0, 0 });
    const QImage source = image.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < source.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(source.constScanLine(y));
        for (int x = 0; x < source.width(); ++x) {
            auto &sum = sums[CellOf(line[x])];
            sum[0] += qRed(line[x]);
            sum[1] += qGreen(line[x]);
            sum[2] += qBlue(line[x]);
            ++sum[3];
        }
    }
    std::vector<Counted> colours;
    for (std::size_t cell = 0; cell < kCells; ++cell) {
        const auto &sum = sums[cell];
        if (sum[3])
            colours.push_back(
                { { int(sum[0] / sum[3]), int(sum[1] / sum[3]), int(sum[2] / sum[3]) }, sum[3], cell });
    }
    std::vector<Box> boxes{ Measured(colours, 0, colours.size()) };
    while (boxes.size() < kColours) {
        const auto heaviest = std::max_element(
            boxes.begin(), boxes.end(), [](const Box &a, const Box &b) { return a.weight < b.weight; });
        const Box cut = *heaviest;
        if (cut.weight == 0 || cut.to - cut.from < 2)
            break;
        const auto begin = colours.begin() + std::ptrdiff_t(cut.from);
        const auto end = colours.begin() + std::ptrdiff_t(cut.to);
        const auto part = std::size_t(cut.widest);
        std::sort(begin, end,
                  [part](const Counted &a, const Counted &b) { return a.parts[part] < b.parts[part]; });
        const int middle = (begin->parts[part] + (end - 1)->parts[part] + 1) / 2;
        const auto border = std::find_if(begin + 1, end - 1,
                                         [&](const Counted &colour) { return colour.parts[part] >= middle; });
        const auto at = std::size_t(border - colours.begin());
        *heaviest = Measured(colours, cut.from, at);
        boxes.push_back(Measured(colours, at, cut.to));
    }

    std::vector<uchar> entryOf(kCells, 0);
    QImage few(source.size(), QImage::Format_Indexed8);
    QList<QRgb> table;
    for (const Box &box : boxes) {
        std::array<std::int64_t, 4> sum{ 0, 0, 0, 0 };
        for (std::size_t index = box.from; index < box.to; ++index) {
            for (std::size_t part = 0; part < 4; ++part)
                sum[part] += sums[colours[index].cell][part];
            entryOf[colours[index].cell] = uchar(table.size());
        }
        table.append(qRgb(int(sum[0] / sum[3]), int(sum[1] / sum[3]), int(sum[2] / sum[3])));
    }
    few.setColorTable(table);
    for (int y = 0; y < source.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(source.constScanLine(y));
        uchar *to = few.scanLine(y);
        for (int x = 0; x < source.width(); ++x)
            to[x] = entryOf[CellOf(line[x])];
    }
    return few;
}
