// UITableView: the headers and footers of its sections, and the look of a grouped table.
#include <algorithm>
#include <utility>

#include "desktop/uikit/table_view.h"
#include "desktop/uikit/title_request.h"

namespace uikit {
namespace {

thread_local objc::Object askedForTitle;

/// Names the data source for as long as it is asked.
class TitleRequest {
  public:
    explicit TitleRequest(objc::Object dataSource) : former_(std::exchange(askedForTitle, dataSource)) {}
    ~TitleRequest() { askedForTitle = former_; }
    TitleRequest(const TitleRequest&) = delete;
    TitleRequest& operator=(const TitleRequest&) = delete;

  private:
    objc::Object former_;
};

const Color bandColor = Color::fromHex(0xF4F4F6);
constexpr double bandMargin = 15;
constexpr double bandTextSize = 13;
constexpr double groupTextGap = 6;  // between a group and the text that belongs to it

}  // namespace

objc::Object dataSourceAskedForTitle() { return askedForTitle; }

void TableHeaderFooterView::define(objc::ClassDefinition<TableHeaderFooterView>& definition) {
    definition.method<"initWithReuseIdentifier:", &TableHeaderFooterView::initWithReuseIdentifier>()
        .method<"reuseIdentifier", &TableHeaderFooterView::reuseIdentifier>()
        .method<"prepareForReuse", &TableHeaderFooterView::prepareForReuse>()
        .method<"textLabel", &TableHeaderFooterView::textLabel>();
}

objc::Object TableHeaderFooterView::initWithFrame(Rect frame) {
    const auto made = View::initWithFrame(frame);
    setBackgroundColor(uiColor(bandColor));
    label_ = objc::Ref<Label>::make();
    label_->setFontValue(graphics::Font::system(bandTextSize, graphics::Weight::Medium));
    label_->setColorValue(palette::secondaryText);
    addSubview(label_);
    return made;
}

objc::Object TableHeaderFooterView::initWithReuseIdentifier(objc::Object identifier) {
    identifier_ = objc::Strong<>::adopt(objc::send<"copy", objc::Object>(identifier));
    return objc::send<"initWithFrame:", objc::Object>(object(), Rect{{0, 0}, {320, usualHeight}});
}

void TableHeaderFooterView::setGrouped(Side side) {
    grouped_ = true;
    setBackgroundColor({});
    label_->setFontValue(graphics::Font::system(bandTextSize));
    label_->setNumberOfLines(0);
    label_->setTag(static_cast<long>(side));
    setNeedsLayout();
}

void TableHeaderFooterView::layoutSubviews() {
    const Rect inner = bounds().inset(bandMargin, 0);
    if (!grouped_) return label_->setFrame(inner);
    const double height = std::min(inner.height(), label_->sizeThatFits({inner.width(), 0}).height);
    const bool header = label_->tag() == static_cast<long>(Side::Header);
    const double top = header ? inner.bottom() - height - groupTextGap : inner.top() + groupTextGap;
    label_->setFrame({{inner.left(), top}, {inner.width(), height}});
}

void TableView::registerHeaderFooterClass(Class viewClass, objc::Object identifier) {
    bandClasses_[utf8(identifier)] = viewClass;
}

objc::Object TableView::dequeueHeaderFooter(objc::Object identifier) {
    const std::string name = utf8(identifier);
    auto& pool = reusableBands_[name];
    if (!pool.empty()) {
        const objc::Ref<View> band = pool.back();
        pool.pop_back();
        objc::send<"prepareForReuse">(band->object());
        return objc::autorelease(objc::Strong<>(band->object()));
    }
    const auto known = bandClasses_.find(name);
    if (known == bandClasses_.end() || !known->second) return {};
    return objc::autorelease(objc::make<objc::Object, "initWithReuseIdentifier:">(known->second, identifier));
}

std::string TableView::ask(SEL title, long section) {
    const auto source = dataSource();
    if (!source || !objc::respondsTo(source, title)) return {};
    const TitleRequest request(source);
    return utf8(objc::sendSelector<objc::Object>(source, title, object(), section));
}

double TableView::heightOf(const Band& band, long section, const std::string& title) {
    if (delegateAnswers(band.height)) return objc::sendSelector<double>(delegate(), band.height, object(), section);
    return title.empty() ? band.untitled : band.titled;
}

TableView::Band TableView::headerBand() const {
    constexpr double groupedTitled = 40;
    constexpr double groupedUntitled = 22;
    return {objc::selector<"tableView:heightForHeaderInSection:">(),
            objc::selector<"tableView:viewForHeaderInSection:">(), TableHeaderFooterView::Side::Header,
            style_ == grouped ? groupedTitled : TableHeaderFooterView::usualHeight,
            style_ == grouped ? groupedUntitled : 0};
}

TableView::Band TableView::footerBand() const {
    constexpr double groupedTitled = 34;
    constexpr double groupedUntitled = 8;
    return {objc::selector<"tableView:heightForFooterInSection:">(),
            objc::selector<"tableView:viewForFooterInSection:">(), TableHeaderFooterView::Side::Footer,
            style_ == grouped ? groupedTitled : TableHeaderFooterView::usualHeight,
            style_ == grouped ? groupedUntitled : 0};
}

/// The delegate's own view, or a band with the title; null for neither.
objc::Ref<View> TableView::makeBand(const Band& band, long section, const std::string& title) {
    if (delegateAnswers(band.view)) {
        if (auto* own = objc::sendSelector<View*>(delegate(), band.view, object(), section))
            return objc::Ref<View>(own);
    }
    if (title.empty()) return {};
    auto made = objc::Ref<TableHeaderFooterView>::make<"initWithFrame:">(
        Rect{{0, 0}, {bounds().size.width, TableHeaderFooterView::usualHeight}});
    if (style_ == grouped) made->setGrouped(band.side);
    made->textLabel()->setString(title);
    return objc::Ref<View>(made.get());
}

void TableView::dropBands() {
    for (auto& section : sections_) {
        for (auto* slot : {&section.header, &section.footer}) {
            const auto band = std::exchange(*slot, {});
            if (!band) continue;
            band->removeFromSuperview();
            auto* known = objc::peerIf<TableHeaderFooterView>(band->object());
            const std::string identifier = known ? utf8(known->reuseIdentifier()) : std::string();
            if (!identifier.empty()) reusableBands_[identifier].push_back(band);
        }
    }
}

void TableView::layOutBands() {
    const double width = bounds().size.width;
    const double top = contentOffset().y + contentInset().top;
    for (std::size_t i = 0; i < sections_.size(); ++i) {
        if (!std::exchange(sections_[i].hasBands, true)) {
            const auto index = static_cast<long>(i);
            auto header = sections_[i].layout.headerHeight() > 0
                              ? makeBand(headerBand(), index, sections_[i].headerTitle)
                              : objc::Ref<View>();
            auto footer = sections_[i].layout.footerHeight() > 0
                              ? makeBand(footerBand(), index, sections_[i].footerTitle)
                              : objc::Ref<View>();
            if (header) addSubview(header);
            if (footer) addSubview(footer);
            sections_[i].header = std::move(header);
            sections_[i].footer = std::move(footer);
        }
        const SectionLayout& layout = sections_[i].layout;
        if (const auto& header = sections_[i].header) {
            // The header of a plain table stays in view as long as its section does.
            const double lowest = std::max(layout.top(), layout.footerTop() - layout.headerHeight());
            const double y = style_ == plain ? std::clamp(top, layout.top(), lowest) : layout.top();
            header->setFrame({{0, y}, {width, layout.headerHeight()}});
            bringSubviewToFront(header);
        }
        if (const auto& footer = sections_[i].footer)
            footer->setFrame({{0, layout.footerTop()}, {width, layout.footerHeight()}});
    }
}

/// Lines over the whole width above and below each group.
void TableView::drawGroupEdges(graphics::Canvas& canvas) {
    for (const auto& section : sections_) {
        const SectionLayout& layout = section.layout;
        if (layout.rowCount() == 0) continue;
        const double width = bounds().size.width;
        canvas.horizontalHairline(0, width, layout.rowTop(0), palette::separator);
        canvas.horizontalHairline(0, width, layout.footerTop() - canvas.pixel(), palette::separator);
    }
}

}  // namespace uikit
