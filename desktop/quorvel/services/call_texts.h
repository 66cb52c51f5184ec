// The texts of a call: whom it was with and where. Calls with the same counterpart share them.
#pragma once

#include <memory>
#include <utility>

#include "objc/counted_slot.h"
#include "objc/strong.h"

namespace quorvel {

/// Unchanging once it is shared. Each may be null.
struct CallTexts {
    objc::Strong<> phoneNumber;
    objc::Strong<> name;
    objc::Strong<> label;
    objc::Strong<> location;
};

/// A call's place for its texts. Every operation is safe on any thread, at any time, and takes no lock.
class CallTextsSlot {
  public:
    /// One of the texts, owned; null where there is none.
    objc::Strong<> load(objc::Strong<> CallTexts::*text) const {
        Node* node = slot_.arrive();
        if (!node) return {};
        auto found = (*node->texts).*text;
        slot_.leave(node);
        return found;
    }

    void store(std::shared_ptr<const CallTexts> texts) { Slot::drop(slot_.take(new Node(std::move(texts)))); }

    /// Puts another text in the place of that one. Other calls that share the texts keep theirs.
    void replace(objc::Strong<> CallTexts::*text, const objc::Strong<>& replacement) {
        for (;;) {
            Node* present = slot_.arrive();
            auto changed = std::make_shared<CallTexts>(present ? *present->texts : CallTexts());
            (*changed).*text = replacement;
            auto* next = new Node(std::move(changed));
            if (slot_.replace(present, next)) return;
            if (present) slot_.leave(present);
            delete next;
        }
    }

  private:
    struct Node : objc::detail::CountedNode {
        explicit Node(std::shared_ptr<const CallTexts> content) : texts(std::move(content)) {}
        static void destroy(Node* node) { delete node; }
        std::shared_ptr<const CallTexts> texts;
    };
    using Slot = objc::detail::CountedSlot<Node>;

    mutable Slot slot_;
};

}  // namespace quorvel
