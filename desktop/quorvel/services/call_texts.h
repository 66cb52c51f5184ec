// The texts of a call: whom it was with and where, which calls with the same counterpart share, and its day.
#pragma once

#include <memory>
#include <utility>

#include "objc/counted_slot.h"
#include "objc/strong.h"

namespace quorvel {

/// Whom a call was with, and where. Unchanging once it is shared; each may be null.
struct CounterpartTexts {
    objc::Strong<> phoneNumber;
    objc::Strong<> name;
    objc::Strong<> label;
    objc::Strong<> location;
};

struct CallTexts {
    std::shared_ptr<const CounterpartTexts> counterpart = std::make_shared<CounterpartTexts>();
    objc::Strong<> day;
};

/// A call's place for its texts. Every operation is safe on any thread, at any time, and takes no lock.
class CallTextsSlot {
  public:
    /// One of the texts, owned; null where there is none.
    objc::Strong<> load(objc::Strong<> CounterpartTexts::*text) const {
        return read([text](const CallTexts& texts) { return (*texts.counterpart).*text; });
    }
    objc::Strong<> loadDay() const {
        return read([](const CallTexts& texts) { return texts.day; });
    }

    void store(CallTexts texts) { Slot::drop(slot_.take(new Node(std::move(texts)))); }

    /// Puts another text in the place of that one. Other calls that share the texts keep theirs.
    void replace(objc::Strong<> CounterpartTexts::*text, const objc::Strong<>& replacement) {
        change([&](CallTexts& texts) {
            auto changed = std::make_shared<CounterpartTexts>(*texts.counterpart);
            (*changed).*text = replacement;
            texts.counterpart = std::move(changed);
        });
    }
    void replaceDay(const objc::Strong<>& replacement) {
        change([&](CallTexts& texts) { texts.day = replacement; });
    }

  private:
    struct Node : objc::detail::CountedNode {
        explicit Node(CallTexts content) : texts(std::move(content)) {}
        static void destroy(Node* node) { delete node; }
        CallTexts texts;
    };
    using Slot = objc::detail::CountedSlot<Node>;

    template <class Read>
    objc::Strong<> read(Read take) const {
        Node* node = slot_.arrive();
        if (!node) return {};
        auto found = take(node->texts);
        slot_.leave(node);
        return found;
    }
    /// May change several copies, of which the last goes in.
    template <class Change>
    void change(Change apply) {
        for (;;) {
            Node* present = slot_.arrive();
            auto* next = new Node(present ? present->texts : CallTexts());
            apply(next->texts);
            if (slot_.replace(present, next)) return;
            if (present) slot_.leave(present);
            delete next;
        }
    }

    mutable Slot slot_;
};

}  // namespace quorvel
