// BlockActionSheet over the toolkit's sheet.
#include "desktop/quorvel/visual/block_action_sheet.h"

#include <memory>

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

/// What a panel owns while it is there: the sheet, which forgets the panel when it goes, chosen from or not.
struct BlockActionSheet::Shown {
    objc::Ref<BlockActionSheet> sheet;
    uikit::Sheet* panel = nullptr;

    explicit Shown(BlockActionSheet* owner) : sheet(owner) {}
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;
    ~Shown() { forget(); }
    void forget() const {
        if (sheet->panel_ == panel) sheet->panel_ = nullptr;
    }
};

void BlockActionSheet::showInView(uikit::View* view) {
    uikit::Window* window = view && view->window() ? view->window() : uikit::Application::shared()->keyWindow();
    if (!window || panel_) return;
    const auto shown = std::make_shared<Shown>(this);
    panel_ = uikit::Sheet::present(window, content_, [shown](long index) {
        shown->forget();
        const auto& blocks = shown->sheet->blocks_;
        if (index < 0 || static_cast<std::size_t>(index) >= blocks.size()) return;
        if (const auto block = blocks[static_cast<std::size_t>(index)]) block();
    });
    shown->panel = panel_;
}

void BlockActionSheet::dismissWithClickedButtonIndexAnimated(long index, bool animated) {
    if (const objc::Ref<uikit::Sheet> panel{panel_}) panel->dismiss(index, animated);
}

}  // namespace quorvel
