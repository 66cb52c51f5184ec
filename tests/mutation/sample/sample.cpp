// What the finder of changes is tried on: one of everything that it changes.
#include <algorithm>

namespace {

constexpr int limit = 3;
static_assert(limit > 0, "not changed");

struct List {
    bool isEmpty() const { return count == 0; }
    void clear();
    int count = 0;
};

int between(int low, int high) { return std::max(low, high); }

int look(List& list, int row, bool wanted) {
    if (!wanted || row >= list.count) return -1;
    if (auto found = between(row, limit)) list.clear();
    for (int i = 0; i < row; ++i) {
        if (list.isEmpty()) break;
        list.count += i;
    }
    const char* name = wanted ? "setText:" : "a text";
    return name[0] + between(1, row);
}

}  // namespace

int use(List& list) { return look(list, 1, true); }
