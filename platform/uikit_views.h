// UIKit, the views: what the product sends to views, controls, tables and the search bar.
#pragma once

#include "platform/coregraphics.h"
#include "platform/foundation.h"

struct UIColor : NSObject {
    static constexpr objc::Name className{"UIColor"};

    static UIColor colorWithRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
        return objc::send<"colorWithRed:green:blue:alpha:", UIColor>(cls<UIColor>(), red, green, blue, alpha);
    }
    /// From 24 bits, red first. The companion brings this method.
    static UIColor colorWithHex(NSInteger hex) { return objc::send<"colorWithHex:", UIColor>(cls<UIColor>(), hex); }
    static UIColor whiteColor() { return objc::send<"whiteColor", UIColor>(cls<UIColor>()); }
    static UIColor clearColor() { return objc::send<"clearColor", UIColor>(cls<UIColor>()); }
    static UIColor darkGrayColor() { return objc::send<"darkGrayColor", UIColor>(cls<UIColor>()); }
};

struct UIFont : NSObject {
    static constexpr objc::Name className{"UIFont"};

    static UIFont boldSystemFontOfSize(CGFloat size) {
        return objc::send<"boldSystemFontOfSize:", UIFont>(cls<UIFont>(), size);
    }
};

struct UIImage : NSObject {
    static constexpr objc::Name className{"UIImage"};

    // Both answer nil when there is no such image.
    static UIImage imageNamed(NSString name) { return objc::send<"imageNamed:", UIImage>(cls<UIImage>(), name); }
    static UIImage imageWithContentsOfFile(NSString path) {
        return objc::send<"imageWithContentsOfFile:", UIImage>(cls<UIImage>(), path);
    }
};

struct UIView : NSObject {
    static constexpr objc::Name className{"UIView"};

    CGRect frame() const { return objc::send<"frame", CGRect>(*this); }
    void setFrame(CGRect frame) const { objc::send<"setFrame:">(*this, frame); }
    CGRect bounds() const { return objc::send<"bounds", CGRect>(*this); }
    UIView superview() const { return objc::send<"superview", UIView>(*this); }
    NSArray subviews() const { return objc::send<"subviews", NSArray>(*this); }
    void addSubview(UIView view) const { objc::send<"addSubview:">(*this, view); }
    void removeFromSuperview() const { objc::send<"removeFromSuperview">(*this); }
    UIView viewWithTag(NSInteger tag) const { return objc::send<"viewWithTag:", UIView>(*this, tag); }
    void setTag(NSInteger tag) const { objc::send<"setTag:">(*this, tag); }
    void setHidden(bool hidden) const { objc::send<"setHidden:">(*this, hidden); }
    void setNeedsDisplay() const { objc::send<"setNeedsDisplay">(*this); }
    void setUserInteractionEnabled(bool enabled) const { objc::send<"setUserInteractionEnabled:">(*this, enabled); }
    UIColor tintColor() const { return objc::send<"tintColor", UIColor>(*this); }
    void setTintColor(UIColor color) const { objc::send<"setTintColor:">(*this, color); }
    void setBackgroundColor(UIColor color) const { objc::send<"setBackgroundColor:">(*this, color); }
    bool becomeFirstResponder() const { return objc::send<"becomeFirstResponder", bool>(*this); }
};

struct UIWindow : UIView {
    static constexpr objc::Name className{"UIWindow"};
};

struct UILabel : UIView {
    static constexpr objc::Name className{"UILabel"};

    static objc::Strong<UILabel> makeWithFrame(CGRect frame) {
        return objc::make<UILabel, "initWithFrame:">(objc::classNamed<"UILabel">(), frame);
    }
    void setText(NSString text) const { objc::send<"setText:">(*this, text); }
    void setFont(UIFont font) const { objc::send<"setFont:">(*this, font); }
    void setTextColor(UIColor color) const { objc::send<"setTextColor:">(*this, color); }
    void setTextAlignment(NSInteger alignment) const { objc::send<"setTextAlignment:">(*this, alignment); }
};

struct UIControl : UIView {
    static constexpr objc::Name className{"UIControl"};
    static constexpr NSUInteger touchUpInside = 64;
    static constexpr NSUInteger valueChanged = 4096;

    void addTarget(Object target, SEL action, NSUInteger events) const {
        objc::send<"addTarget:action:forControlEvents:">(*this, target, action, events);
    }
    void setSelected(bool selected) const { objc::send<"setSelected:">(*this, selected); }
};

struct UIButton : UIControl {
    static constexpr objc::Name className{"UIButton"};
    static constexpr NSUInteger normal = 0;
    static constexpr NSUInteger selected = 4;

    static UIButton buttonWithType(NSInteger type) {
        return objc::send<"buttonWithType:", UIButton>(cls<UIButton>(), type);
    }
    void setImage(UIImage image, NSUInteger state) const { objc::send<"setImage:forState:">(*this, image, state); }
    /// The companion brings this method.
    void setImageTintColor(UIColor color) const { objc::send<"setImageTintColor:">(*this, color); }
};

struct UISegmentedControl : UIControl {
    static constexpr objc::Name className{"UISegmentedControl"};

    static objc::Strong<UISegmentedControl> makeWithItems(NSArray items) {
        return objc::make<UISegmentedControl, "initWithItems:">(objc::classNamed<"UISegmentedControl">(), items);
    }
    NSInteger selectedSegmentIndex() const { return objc::send<"selectedSegmentIndex", NSInteger>(*this); }
    void setSelectedSegmentIndex(NSInteger index) const { objc::send<"setSelectedSegmentIndex:">(*this, index); }
    void setImage(UIImage image, NSUInteger segment) const {
        objc::send<"setImage:forSegmentAtIndex:">(*this, image, segment);
    }
};

struct UIActivityIndicatorView : UIView {
    static constexpr objc::Name className{"UIActivityIndicatorView"};

    static objc::Strong<UIActivityIndicatorView> makeWithStyle(NSInteger style) {
        return objc::make<UIActivityIndicatorView, "initWithActivityIndicatorStyle:">(
            objc::classNamed<"UIActivityIndicatorView">(), style);
    }
    void startAnimating() const { objc::send<"startAnimating">(*this); }
    void stopAnimating() const { objc::send<"stopAnimating">(*this); }
    static UIActivityIndicatorView appearance() {
        return objc::send<"appearance", UIActivityIndicatorView>(cls<UIActivityIndicatorView>());
    }
    void setColor(UIColor color) const { objc::send<"setColor:">(*this, color); }
};

struct NSIndexPath : NSObject {
    static constexpr objc::Name className{"NSIndexPath"};

    NSInteger row() const { return objc::send<"row", NSInteger>(*this); }
    NSInteger section() const { return objc::send<"section", NSInteger>(*this); }
};

struct NSIndexSet : NSObject {
    static constexpr objc::Name className{"NSIndexSet"};

    static NSIndexSet indexSetWithIndex(NSUInteger index) {
        return objc::send<"indexSetWithIndex:", NSIndexSet>(cls<NSIndexSet>(), index);
    }
};

struct UITableViewCell : UIView {
    static constexpr objc::Name className{"UITableViewCell"};
    static constexpr NSInteger disclosureIndicator = 1;
    static constexpr NSInteger detailButton = 4;
    static constexpr NSInteger deleteStyle = 1;

    UIView contentView() const { return objc::send<"contentView", UIView>(*this); }
    UIView accessoryView() const { return objc::send<"accessoryView", UIView>(*this); }
    void setAccessoryView(UIView view) const { objc::send<"setAccessoryView:">(*this, view); }
    void setAccessoryType(NSInteger type) const { objc::send<"setAccessoryType:">(*this, type); }
};

struct UIScrollView : UIView {
    static constexpr objc::Name className{"UIScrollView"};

    CGPoint contentOffset() const { return objc::send<"contentOffset", CGPoint>(*this); }
    void setContentOffset(CGPoint offset, bool animated) const {
        objc::send<"setContentOffset:animated:">(*this, offset, animated);
    }
};

struct UITableView : UIScrollView {
    static constexpr objc::Name className{"UITableView"};
    static constexpr NSInteger rowAnimationRight = 1;
    static constexpr NSInteger rowAnimationNone = 5;

    void reloadData() const { objc::send<"reloadData">(*this); }
    void reloadSections(NSIndexSet sections, NSInteger animation) const {
        objc::send<"reloadSections:withRowAnimation:">(*this, sections, animation);
    }
    void deleteRows(NSArray paths, NSInteger animation) const {
        objc::send<"deleteRowsAtIndexPaths:withRowAnimation:">(*this, paths, animation);
    }
    void deselectRow(NSIndexPath path, bool animated) const {
        objc::send<"deselectRowAtIndexPath:animated:">(*this, path, animated);
    }
    void beginUpdates() const { objc::send<"beginUpdates">(*this); }
    void endUpdates() const { objc::send<"endUpdates">(*this); }
    bool isEditing() const { return objc::send<"isEditing", bool>(*this); }
    void setEditing(bool editing) const { objc::send<"setEditing:">(*this, editing); }
    void setEditing(bool editing, bool animated) const { objc::send<"setEditing:animated:">(*this, editing, animated); }
    UIView tableHeaderView() const { return objc::send<"tableHeaderView", UIView>(*this); }
    void setTableHeaderView(UIView view) const { objc::send<"setTableHeaderView:">(*this, view); }
    void registerClass(Object cellClass, NSString identifier) const {
        objc::send<"registerClass:forCellReuseIdentifier:">(*this, cellClass, identifier);
    }
    void registerHeaderFooterClass(Object viewClass, NSString identifier) const {
        objc::send<"registerClass:forHeaderFooterViewReuseIdentifier:">(*this, viewClass, identifier);
    }
    template <objc::Handle T>
    T dequeueReusableCell(NSString identifier) const {
        return objc::send<"dequeueReusableCellWithIdentifier:", T>(*this, identifier);
    }
    template <objc::Handle T>
    T dequeueReusableCell(NSString identifier, NSIndexPath path) const {
        return objc::send<"dequeueReusableCellWithIdentifier:forIndexPath:", T>(*this, identifier, path);
    }
};

struct UISearchBar : UIView {
    static constexpr objc::Name className{"UISearchBar"};

    static objc::Strong<UISearchBar> makeWithFrame(CGRect frame) {
        return objc::make<UISearchBar, "initWithFrame:">(objc::classNamed<"UISearchBar">(), frame);
    }
    NSString text() const { return objc::send<"text", NSString>(*this); }
    void setPlaceholder(NSString text) const { objc::send<"setPlaceholder:">(*this, text); }
    void setScopeButtonTitles(NSArray titles) const { objc::send<"setScopeButtonTitles:">(*this, titles); }
    void setSelectedScopeButtonIndex(NSInteger index) const {
        objc::send<"setSelectedScopeButtonIndex:">(*this, index);
    }
};
