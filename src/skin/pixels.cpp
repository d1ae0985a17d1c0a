#include "skin/pixels.h"

#include <algorithm>

namespace kxskin {

namespace {

// Source index of target index `i` when a length `from` becomes `to` by repeating or cutting out
// the middle: the first half of the target comes from the start, the rest from the end.
int SliceIndex(int i, int from, int to) {
    if (to >= from) {
        const int head = from / 2, tail = from - head - 1;
        if (i < head) return i;
        if (i >= to - tail) return i - (to - from);
        return head;
    }
    const int head = (to + 1) / 2;
    return i < head ? i : i + (from - to);
}

struct Weight {
    int index;
    double weight;
};

// For each of `to` target cells the source cells it covers and how much, for shrinking `from`
// cells into `to` (to <= from).
std::vector<std::vector<Weight>> AreaWeights(int from, int to) {
    std::vector<std::vector<Weight>> out(static_cast<size_t>(to));
    const double scale = static_cast<double>(from) / to;
    for (int i = 0; i < to; ++i) {
        const double begin = i * scale, end = (i + 1) * scale;
        for (int s = static_cast<int>(begin); s < from && s < end; ++s) {
            const double cover = std::min(end, s + 1.0) - std::max(begin, static_cast<double>(s));
            if (cover > 0) out[static_cast<size_t>(i)].push_back(Weight{s, cover / scale});
        }
    }
    return out;
}

uint32_t Channel(uint32_t p, int shift) { return (p >> shift) & 0xFF; }

}  // namespace

Picture SliceToSize(const Picture& shape, int width, int height) {
    Picture out;
    if (shape.Empty() || width <= 0 || height <= 0) return out;
    out.width = width;
    out.height = height;
    out.pixels.resize(static_cast<size_t>(width) * height);
    std::vector<int> columns(static_cast<size_t>(width));
    for (int x = 0; x < width; ++x) columns[static_cast<size_t>(x)] = SliceIndex(x, shape.width, width);
    for (int y = 0; y < height; ++y) {
        const int sy = SliceIndex(y, shape.height, height);
        for (int x = 0; x < width; ++x)
            out.pixels[static_cast<size_t>(y) * width + x] = shape.At(columns[static_cast<size_t>(x)], sy);
    }
    return out;
}

Picture FitInto(const Picture& picture, int width, int height) {
    Picture out;
    if (picture.Empty() || width <= 0 || height <= 0) return out;
    out.width = width;
    out.height = height;
    out.pixels.assign(static_cast<size_t>(width) * height, 0);

    int w = picture.width, h = picture.height;
    if (w > width || h > height) {
        // the tighter side decides; the other follows with the same ratio, at least one pixel
        if (static_cast<long long>(w) * height > static_cast<long long>(h) * width) {
            h = std::max(1, static_cast<int>(static_cast<long long>(h) * width / w));
            w = width;
        } else {
            w = std::max(1, static_cast<int>(static_cast<long long>(w) * height / h));
            h = height;
        }
    }
    const auto cols = AreaWeights(picture.width, w);
    const auto rows = AreaWeights(picture.height, h);
    const int left = (width - w) / 2, top = (height - h) / 2;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            double sum[4] = {0, 0, 0, 0};
            for (const Weight& ry : rows[static_cast<size_t>(y)])
                for (const Weight& cx : cols[static_cast<size_t>(x)]) {
                    const uint32_t p = picture.At(cx.index, ry.index);
                    const double f = ry.weight * cx.weight;
                    for (int c = 0; c < 4; ++c) sum[c] += f * Channel(p, c * 8);
                }
            uint32_t v = 0;
            for (int c = 0; c < 4; ++c)
                v |= static_cast<uint32_t>(std::min(255.0, sum[c] + 0.5)) << (c * 8);
            out.pixels[static_cast<size_t>(y + top) * width + (x + left)] = v;
        }
    }
    return out;
}

Picture OverColour(const Picture& picture, uint32_t rgb) {
    Picture out = picture;
    for (uint32_t& p : out.pixels) {
        const uint32_t rest = 255 - Channel(p, 24);
        uint32_t v = 0xFF000000u;
        for (int c = 0; c < 3; ++c) {
            const uint32_t value = Channel(p, c * 8) + (Channel(rgb, c * 8) * rest + 127) / 255;
            v |= std::min<uint32_t>(value, 255) << (c * 8);
        }
        p = v;
    }
    return out;
}

Picture OpaqueWithin(const Picture& shape, int threshold) {
    Picture out = shape;
    for (uint32_t& p : out.pixels) {
        const uint32_t a = Channel(p, 24);
        if (a == 0 || static_cast<int>(a) < threshold) {
            p = 0;
            continue;
        }
        uint32_t v = 0xFF000000u;
        for (int c = 0; c < 3; ++c) v |= std::min<uint32_t>((Channel(p, c * 8) * 255 + a / 2) / a, 255) << (c * 8);
        p = v;
    }
    return out;
}

std::vector<Span> RegionOf(const Picture& shape, int threshold) {
    std::vector<Span> out;
    std::vector<Span> previous;  // the runs of the row above, as they stand in `out`
    std::vector<size_t> previousAt;
    for (int y = 0; y < shape.height; ++y) {
        std::vector<Span> row;
        for (int x = 0; x < shape.width;) {
            if (static_cast<int>(Channel(shape.At(x, y), 24)) < threshold || Channel(shape.At(x, y), 24) == 0) {
                ++x;
                continue;
            }
            const int start = x;
            while (x < shape.width && static_cast<int>(Channel(shape.At(x, y), 24)) >= threshold &&
                   Channel(shape.At(x, y), 24) != 0)
                ++x;
            row.push_back(Span{start, y, x, y + 1});
        }
        bool same = row.size() == previous.size();
        for (size_t i = 0; same && i < row.size(); ++i)
            same = row[i].left == previous[i].left && row[i].right == previous[i].right;
        if (same && !row.empty()) {
            for (size_t i : previousAt) out[i].bottom = y + 1;
        } else {
            previousAt.clear();
            for (const Span& s : row) {
                previousAt.push_back(out.size());
                out.push_back(s);
            }
        }
        previous = row;
    }
    return out;
}

}  // namespace kxskin
