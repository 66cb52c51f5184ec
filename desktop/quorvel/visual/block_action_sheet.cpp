// BlockActionSheet over the toolkit's sheet.
#include "desktop/quorvel/visual/block_action_sheet.h"

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

void BlockActionSheet::showInView(uikit::View* view) {
    uikit::Window* window = view && view->window() ? view->window() : uikit::Application::shared()->keyWindow();
    if (!window || sheet_) return;
    sheet_ = uikit::Sheet::present(window, content_, [me = objc::Ref<BlockActionSheet>(this)](long index) {
        me->sheet_ = {};
        if (index < 0 || static_cast<std::size_t>(index) >= me->blocks_.size()) return;
        if (const auto block = me->blocks_[static_cast<std::size_t>(index)]) block();
    });
}

void BlockActionSheet::dismissWithClickedButtonIndexAnimated(long index, bool animated) {
    if (const auto sheet = sheet_) sheet->dismiss(index, animated);
}

}  // namespace quorvel
