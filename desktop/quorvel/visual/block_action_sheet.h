// BlockActionSheet: a sheet whose buttons run blocks.
#pragma once

#include "desktop/uikit/sheet.h"
#include "desktop/weak/weak.h"

namespace quorvel {

/// Keeps itself while it shows, and its blocks until then: it asks once.
class BlockActionSheet : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"BlockActionSheet"};
    static void define(objc::ClassDefinition<BlockActionSheet>& definition);

    // Messages of the same names. A title that asks before calls are deleted is shown as questionForPeople() puts it.
    // Blocks take nothing, are copied, may be nil, and run on the main thread after the
    // sheet has begun to leave.
    objc::Object initWithTitle(objc::Object title);
    void setDestructiveButton(objc::Object title, const void* block);
    void setCancelButton(objc::Object title, const void* block);
    void addButton(objc::Object title, const void* block);
    /// Shows it over the window of the view, or the key window.
    void showInView(uikit::View* view);
    /// Ends it; the button's block runs, none for -1. Nothing happens while it does not show.
    void dismissWithClickedButtonIndexAnimated(long index, bool animated);

  private:
    using Blocks = std::vector<objc::Block<void()>>;
    struct Shown;
    void add(objc::Object title, const void* block, uikit::Sheet::Role role);

    /// What is shown: the title in words for people.
    uikit::Sheet::Content contentForPeople() const;

    uikit::Sheet::Content content_;
    Blocks blocks_;
    weak::Peer<uikit::Sheet> panel_;  // null while none shows
};

}  // namespace quorvel
