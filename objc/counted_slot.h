// A word that several threads replace and read without a lock: it points at a counted node and keeps it alive for every
// reader that is on its way.
#pragma once

#include <atomic>
#include <cstdint>

namespace objc::detail {

/// The count that a node of CountedSlot begins with. `Node` derives from it and has `static void destroy(Node*)`.
struct CountedNode {
    /// What being in a slot is worth: more than there can be readers, so that readers who leave before the count of
    /// their arrivals has been handed over never bring it to nought.
    static constexpr std::int64_t inSlot = std::int64_t{1} << 32;
    std::atomic<std::int64_t> references{inSlot};
};

// Why this is safe. The word holds the node's address in its low 48 bits and, in the high 16, how many readers arrived
// at this node through the word and have not left. A reader arrives by raising that count and the address together, in
// one compare-and-swap, so nobody can take the node out between the two. Who takes the node out reads the count in the
// same step, and moves it to the node: references += count - inSlot. A reader that leaves and finds its node still in
// the word lowers the word's count; otherwise its arrival has been, or is about to be, moved to the node, and it lowers
// that count. Either way each arrival is taken off once, and the one whose change makes the sum nought destroys it.
//
// Arrivals at one node are fungible: it does not matter whose the word counts. Arrivals at different nodes are never
// mixed up, though a new node may have an old one's address: an address is used again only after its node was
// destroyed, which the arrival of a reader still under way prevents, and a node that was taken out never goes in again.
// So a reader that finds its address in the word finds its own node, with its own arrival in the count. An empty word
// counts nobody.
//
// 65,535 readers can be under way in one slot at once; each is a thread between two neighbouring steps.
template <class Node>
class CountedSlot {
  public:
    constexpr CountedSlot() = default;
    ~CountedSlot() { drop(take(nullptr)); }
    CountedSlot(const CountedSlot&) = delete;
    CountedSlot& operator=(const CountedSlot&) = delete;

    /// The node, which lives on at least until `leave`; null when the slot is empty (then there is nothing to leave).
    Node* arrive() {
        std::uint64_t word = word_.load(std::memory_order_acquire);
        while (nodeOf(word)) {
            if (word_.compare_exchange_weak(word, word + oneReader, std::memory_order_acquire,
                                            std::memory_order_acquire))
                return nodeOf(word);
        }
        return nullptr;
    }

    void leave(Node* node) {
        std::uint64_t word = word_.load(std::memory_order_relaxed);
        while (nodeOf(word) == node) {
            if (word_.compare_exchange_weak(word, word - oneReader, std::memory_order_release,
                                            std::memory_order_relaxed))
                return;
        }
        drop(node);
    }

    /// Puts a new node, or null, in and answers the old one, which the caller must `drop`.
    [[nodiscard]] Node* take(Node* replacement) {
        std::uint64_t word = word_.exchange(wordOf(replacement), std::memory_order_acq_rel);
        return handOver(word);
    }

    /// Puts a new node, or null, in the place of `expected`, at which the caller has arrived (null: the empty slot).
    /// The arrival is over when this succeeds. When it fails nothing has changed and the caller still has to leave.
    bool replace(Node* expected, Node* replacement) {
        std::uint64_t word = word_.load(std::memory_order_relaxed);
        while (nodeOf(word) == expected) {
            if (!word_.compare_exchange_weak(word, wordOf(replacement), std::memory_order_acq_rel,
                                             std::memory_order_relaxed))
                continue;
            if (Node* old = handOver(word)) {
                drop(old);
                drop(old);
            }
            return true;
        }
        return false;
    }

    /// One more reference for a node that cannot go at present; given back with `drop`.
    static void keep(Node* node) { node->references.fetch_add(1, std::memory_order_relaxed); }
    static void drop(Node* node) {
        if (node && node->references.fetch_sub(1, std::memory_order_acq_rel) == 1) Node::destroy(node);
    }

  private:
    static constexpr int addressBits = 48;
    static constexpr std::uint64_t oneReader = std::uint64_t{1} << addressBits;
    static_assert(sizeof(void*) == 8, "the spare bits of an address are needed");

    static Node* nodeOf(std::uint64_t word) { return reinterpret_cast<Node*>(word & (oneReader - 1)); }
    static std::uint64_t wordOf(Node* node) { return reinterpret_cast<std::uint64_t>(node); }

    /// Moves the arrivals of a word that was taken out to its node, and a reference for the caller.
    static Node* handOver(std::uint64_t word) {
        Node* node = nodeOf(word);
        if (!node) return nullptr;
        auto readers = static_cast<std::int64_t>(word >> addressBits);
        node->references.fetch_add(readers + 1 - CountedNode::inSlot, std::memory_order_acq_rel);
        return node;
    }

    std::atomic<std::uint64_t> word_{0};
};

}  // namespace objc::detail
