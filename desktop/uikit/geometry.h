// The drawing library's geometry as messages carry it: the handset's structures by layout and by type string.
#pragma once

#include "desktop/graphics/color.h"
#include "desktop/graphics/geometry.h"
#include "objc/layer.h"

template <>
struct objc::Encoding<graphics::Point> {
    static constexpr Name text{"{CGPoint=dd}"};
};
template <>
struct objc::Encoding<graphics::Size> {
    static constexpr Name text{"{CGSize=dd}"};
};
template <>
struct objc::Encoding<graphics::Rect> {
    static constexpr Name text{"{CGRect={CGPoint=dd}{CGSize=dd}}"};
};
template <>
struct objc::Encoding<graphics::EdgeInsets> {
    static constexpr Name text{"{UIEdgeInsets=dddd}"};
};

namespace uikit {

using graphics::Color;
using graphics::EdgeInsets;
using graphics::Point;
using graphics::Rect;
using graphics::Size;

}  // namespace uikit
