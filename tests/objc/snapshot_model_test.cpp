// The snapshot array against a plain vector, over random changes.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <vector>

#include "fixtures/strings.h"
#include "objc/snapshot_array.h"

namespace {

using objc::Object;
using Array = objc::SnapshotArray<"LayerTestModelArray">;

std::vector<int> valuesOf(const objc::Snapshot& snapshot) {
    std::vector<int> values;
    for (std::size_t i = 0; i < snapshot.size(); ++i) values.push_back(objc::send<"intValue", int>(snapshot[i]));
    return values;
}

void change(Object array, std::vector<int>& model, int kind, std::size_t index, int value) {
    auto at = model.begin() + static_cast<std::ptrdiff_t>(std::min(index, model.size()));
    switch (kind) {
        case 0:
        case 1:
        case 2:
            objc::send<"addObject:">(array, numberOf(value));
            model.push_back(value);
            break;
        case 3:
            objc::send<"insertObject:atIndex:">(array, numberOf(value), index);
            model.insert(at, value);
            break;
        case 4:
            objc::send<"removeObjectAtIndex:">(array, index);
            if (at != model.end()) model.erase(at);
            break;
        case 5:
            objc::send<"replaceObjectAtIndex:withObject:">(array, index, numberOf(value));
            if (at != model.end()) *at = value;
            break;
        case 6:
            objc::send<"removeObject:">(array, numberOf(value));
            std::erase(model, value);
            break;
        default:
            objc::send<"removeLastObject">(array);
            if (!model.empty()) model.pop_back();
    }
}

TEST(SnapshotModel, behavesAsAVectorAndOldStatesStay) {
    objc::registerClasses<Array>();
    EXPECT_TRUE(rc::check("array equals vector", [] {
        objc::AutoreleasePool pool;
        auto array = objc::Ref<Array>::make();
        std::vector<int> model;
        std::vector<std::pair<objc::Snapshot, std::vector<int>>> states;
        auto steps = *rc::gen::container<std::vector<std::tuple<int, std::size_t, int>>>(
            rc::gen::tuple(rc::gen::inRange(0, 8), rc::gen::inRange<std::size_t>(0, 20), rc::gen::inRange(0, 10)));
        for (auto [kind, index, value] : steps) {
            change(Object{array.self()}, model, kind, index, value);
            states.emplace_back(array->snapshot(), model);
        }
        for (const auto& [snapshot, expected] : states) RC_ASSERT(valuesOf(snapshot) == expected);
        RC_ASSERT((objc::send<"count", unsigned long>(Object{array.self()})) == model.size());
    }));
}

}  // namespace
