// Points, sizes and rectangles, in points, with the handset's layout and type strings.
#pragma once

#include "objc/wire.h"

using CGFloat = double;

struct CGPoint {
    CGFloat x;
    CGFloat y;
};
struct CGSize {
    CGFloat width;
    CGFloat height;
};
struct CGRect {
    CGPoint origin;
    CGSize size;
};

template <>
struct objc::Encoding<CGPoint> {
    static constexpr Name text{"{CGPoint=dd}"};
};
template <>
struct objc::Encoding<CGSize> {
    static constexpr Name text{"{CGSize=dd}"};
};
template <>
struct objc::Encoding<CGRect> {
    static constexpr Name text{"{CGRect={CGPoint=dd}{CGSize=dd}}"};
};
