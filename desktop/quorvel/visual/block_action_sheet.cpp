// BlockActionSheet over the toolkit's sheet.
#include "desktop/quorvel/visual/block_action_sheet.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "desktop/quorvel/visual/question.h"
#include "desktop/uikit/application.h"

namespace quorvel {

void BlockActionSheet::define(objc::ClassDefinition<BlockActionSheet>& definition) {
    definition.method<"initWithTitle:", &BlockActionSheet::initWithTitle>()
        .method<"setDestructiveButtonWithTitle:block:", &BlockActionSheet::setDestructiveButton>()
        .method<"setCancelButtonWithTitle:block:", &BlockActionSheet::setCancelButton>()
        .method<"addButtonWithTitle:block:", &BlockActionSheet::addButton>()
        .method<"showInView:", &BlockActionSheet::showInView>()
        .method<"dismissWithClickedButtonIndex:animated:", &BlockActionSheet::dismissWithClickedButtonIndexAnimated>();
}

objc::Object BlockActionSheet::initWithTitle(objc::Object title) {
    content_.title = uikit::utf8(title);
    return objc::Object{self};
}

void BlockActionSheet::add(objc::Object title, const void* block, uikit::Sheet::Role role) {
    content_.choices.push_back({uikit::utf8(title), role});
    blocks_.push_back(objc::Block<void()>::copyOf(block));
}

void BlockActionSheet::setDestructiveButton(objc::Object title, const void* block) {
    add(title, block, uikit::Sheet::Role::Destructive);
}
void BlockActionSheet::setCancelButton(objc::Object title, const void* block) {
    add(title, block, uikit::Sheet::Role::Cancel);
}
void BlockActionSheet::addButton(objc::Object title, const void* block) {
    add(title, block, uikit::Sheet::Role::Normal);
}

/// What a panel owns while it is there: the sheet, which forgets panel and blocks when it goes, chosen from or not. A
/// block often holds the screen that holds the sheet: kept any longer, neither would ever be freed.
struct BlockActionSheet::Shown {
    objc::Ref<BlockActionSheet> sheet;
    bool ended = false;

    explicit Shown(BlockActionSheet* owner) : sheet(owner) {}
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;
    ~Shown() { end(); }
    /// The blocks, the first time.
    Blocks end() {
        if (std::exchange(ended, true)) return {};
        sheet->panel_ = {};
        return std::exchange(sheet->blocks_, {});
    }
};

uikit::Sheet::Content BlockActionSheet::contentForPeople() const {
    uikit::Sheet::Content shown = content_;
    const auto action = std::ranges::find(shown.choices, uikit::Sheet::Role::Destructive, &uikit::Sheet::Choice::role);
    shown.title = questionForPeople(shown.title, action == shown.choices.end() ? std::string() : action->title);
    return shown;
}

void BlockActionSheet::showInView(uikit::View* view) {
    uikit::Window* window = view && view->window() ? view->window() : uikit::Application::shared()->keyWindow();
    if (!window || panel_.load()) return;
    const auto shown = std::make_shared<Shown>(this);
    const auto panel = uikit::Sheet::present(window, contentForPeople(), [shown](long index) {
        const auto blocks = shown->end();
        if (index < 0 || static_cast<std::size_t>(index) >= blocks.size()) return;
        if (const auto& block = blocks[static_cast<std::size_t>(index)]) block();
    });
    if (!shown->ended) panel_ = panel.get();
}

void BlockActionSheet::dismissWithClickedButtonIndexAnimated(long index, bool animated) {
    if (const auto panel = panel_.load()) panel->dismiss(index, animated);
}

}  // namespace quorvel
