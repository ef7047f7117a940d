#pragma once

#include <algorithm>
#include <cstdint>

// The table's geometry in the terms its layouts are written in: float edges, inclusive
// rectangles, and truncation wherever a float becomes a pixel count.

struct BPoint {
    float x = 0.0f;
    float y = 0.0f;

    constexpr BPoint() = default;
    constexpr BPoint(float px, float py) : x(px), y(py) {}

    constexpr BPoint operator+(BPoint o) const { return {x + o.x, y + o.y}; }
    constexpr BPoint operator-(BPoint o) const { return {x - o.x, y - o.y}; }
    constexpr bool operator==(const BPoint&) const = default;
};

struct BRect {
    float left = 0.0f;
    float top = 0.0f;
    float right = -1.0f;
    float bottom = -1.0f;

    // An empty rectangle, as a fresh rectangle on the old desktop was: right < left.
    constexpr BRect() = default;
    constexpr BRect(float l, float t, float r, float b) : left(l), top(t), right(r), bottom(b) {}
    constexpr BRect(BPoint leftTop, BPoint rightBottom)
        : left(leftTop.x), top(leftTop.y), right(rightBottom.x), bottom(rightBottom.y) {}

    constexpr float Width() const { return right - left; }
    constexpr float Height() const { return bottom - top; }
    constexpr int32_t IntegerWidth() const { return static_cast<int32_t>(right - left); }
    constexpr int32_t IntegerHeight() const { return static_cast<int32_t>(bottom - top); }
    constexpr BPoint LeftTop() const { return {left, top}; }
    constexpr BPoint RightBottom() const { return {right, bottom}; }
    constexpr bool IsValid() const { return left <= right && top <= bottom; }

    constexpr bool Contains(BPoint p) const {
        return p.x >= left && p.x <= right && p.y >= top && p.y <= bottom;
    }
    constexpr bool Contains(const BRect& r) const {
        return r.left >= left && r.right <= right && r.top >= top && r.bottom <= bottom;
    }
    constexpr bool Intersects(const BRect& r) const {
        return IsValid() && r.IsValid() && r.left <= right && r.right >= left && r.top <= bottom &&
               r.bottom >= top;
    }

    constexpr void InsetBy(float dx, float dy) {
        left += dx;
        right -= dx;
        top += dy;
        bottom -= dy;
    }
    constexpr void OffsetBy(float dx, float dy) {
        left += dx;
        right += dx;
        top += dy;
        bottom += dy;
    }
    constexpr void OffsetTo(float x, float y) { OffsetBy(x - left, y - top); }
    constexpr BRect InsetByCopy(float dx, float dy) const {
        BRect r = *this;
        r.InsetBy(dx, dy);
        return r;
    }
    constexpr BRect OffsetByCopy(float dx, float dy) const {
        BRect r = *this;
        r.OffsetBy(dx, dy);
        return r;
    }

    // The common part of two rectangles; invalid (right < left or bottom < top) when they
    // do not meet.
    constexpr BRect operator&(const BRect& r) const {
        return {std::max(left, r.left), std::max(top, r.top), std::min(right, r.right),
                std::min(bottom, r.bottom)};
    }
    // The smallest rectangle holding both.
    constexpr BRect operator|(const BRect& r) const {
        return {std::min(left, r.left), std::min(top, r.top), std::max(right, r.right),
                std::max(bottom, r.bottom)};
    }

    constexpr bool operator==(const BRect&) const = default;
};

// Whether a stored window frame can be used: finite edges on any plausible desktop and a
// size of at least one pixel. A frame read back damaged is treated as never stored.
constexpr bool RimligRam(const BRect& r) {
    constexpr float kGrans = 100000.0f;
    auto rimlig = [](float v) { return v == v && v > -kGrans && v < kGrans; };
    return rimlig(r.left) && rimlig(r.top) && rimlig(r.right) && rimlig(r.bottom) &&
           r.Width() >= 1.0f && r.Height() >= 1.0f;
}

struct rgb_color {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    uint8_t alpha = 255;

    constexpr bool operator==(const rgb_color&) const = default;
};

inline constexpr rgb_color kBordsGron{0, 160, 0, 255};
