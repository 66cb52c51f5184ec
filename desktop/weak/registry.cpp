// The table of objects that are referred to weakly.
//
// An object in the table is retained by the table as well, so its count tells when the table is its only owner: each
// release of NSObject is followed by that check, for the objects in the table alone. Under the lock of its shard the
// object either has an owner besides the table, and can be retained for a reader, or it leaves the table and is
// released for good. A reader therefore never meets an object in its dealloc. Other objects cost one relaxed load for
// each release.
#include <array>
#include <atomic>
#include <mutex>
#include <unordered_map>

#include "desktop/weak/weak.h"

namespace weak {

struct Entry {
    id object;          // null once it is gone; guarded by the shard's lock
    long references;    // how many weak references point here; guarded by the shard's lock
    const void* shard;  // the address that chose the shard
    IMP retain;
    IMP retainCount;
};

namespace {

IMP plainRelease;
IMP plainDealloc;

constexpr std::size_t shardCount = 64;
constexpr std::size_t bucketCount = 4096;

struct Shard {
    std::mutex mutex;
    std::unordered_map<const void*, Entry*> entries;
};

std::array<Shard, shardCount>& shards() {
    static auto* const all = new std::array<Shard, shardCount>;  // objects are released until the process ends
    return *all;
}

/// How many objects of the table hash to a bucket. An object is only entered by one of its owners, so whoever gives up
/// the last ownership sees the object counted here.
std::array<std::atomic<unsigned>, bucketCount> buckets;

std::size_t hashOf(const void* object) {
    const auto address = reinterpret_cast<std::uintptr_t>(object) >> 4;
    return address ^ (address >> 12);
}
Shard& shardOf(const void* object) { return shards()[hashOf(object) % shardCount]; }
std::atomic<unsigned>& bucketOf(const void* object) { return buckets[hashOf(object) % bucketCount]; }

template <class Function>
Function* as(IMP implementation) {
    return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(implementation));
}

/// The table's own reference is the last one, or is given up while others are left.
void releaseForTable(id object) {
    objc::sanitizer::release(object);
    as<void(id, SEL)>(plainRelease)(object, objc::selector<"release">());
}

bool isOwnedByTableAlone(const Entry& entry) {
    return as<unsigned long(id, SEL)>(entry.retainCount)(entry.object, objc::selector<"retainCount">()) == 1;
}

/// Takes the entry out of the table; its references are null from here on. The shard is locked.
id remove(Shard& shard, Entry& entry) {
    const id object = std::exchange(entry.object, nullptr);
    shard.entries.erase(object);
    bucketOf(object).fetch_sub(1, std::memory_order_relaxed);
    return object;
}

/// Ends the object where nobody but the table owns it. `object` may be gone: only its address is looked at before it is
/// found in the table.
void endIfAbandoned(id object) {
    Shard& shard = shardOf(object);
    {
        const std::lock_guard lock(shard.mutex);
        const auto found = shard.entries.find(object);
        if (found == shard.entries.end() || !isOwnedByTableAlone(*found->second)) return;
        remove(shard, *found->second);
    }
    releaseForTable(object);
}

void release(id object, SEL name) {
    as<void(id, SEL)>(plainRelease)(object, name);
    if (bucketOf(object).load(std::memory_order_relaxed) != 0) endIfAbandoned(object);
}

/// An object that came into the table during its own dealloc leaves it here, before its memory goes.
void dealloc(id object, SEL name) {
    if (bucketOf(object).load(std::memory_order_relaxed) != 0) {
        Shard& shard = shardOf(object);
        const std::lock_guard lock(shard.mutex);
        if (const auto found = shard.entries.find(object); found != shard.entries.end()) remove(shard, *found->second);
    }
    as<void(id, SEL)>(plainDealloc)(object, name);
}

/// GCC's runtime knows no weak references, so the root class tells the table. Methods of subclasses that are inherited
/// from it follow.
void replaceMethod(const char* name, void (*replacement)(id, SEL), IMP& plain) {
    Method method = class_getInstanceMethod(objc::classNamed<"NSObject">(), sel_registerName(name));
    plain = method_setImplementation(method, objc::implementation(replacement));
}

__attribute__((constructor)) void observeReleases() {
    replaceMethod("release", &release, plainRelease);
    replaceMethod("dealloc", &dealloc, plainDealloc);
}

IMP implementationIn(id object, SEL name) { return class_getMethodImplementation(object_getClass(object), name); }

Entry* enter(id object) {
    if (!object) return nullptr;
    // Looked up and sent outside the lock, which the runtime's own lock must never be taken under.
    const IMP retain = implementationIn(object, objc::selector<"retain">());
    const IMP retainCount = implementationIn(object, objc::selector<"retainCount">());
    Shard& shard = shardOf(object);
    const std::lock_guard lock(shard.mutex);
    auto& entry = shard.entries[object];
    if (!entry) {
        entry = new Entry{object, 0, object, retain, retainCount};
        as<id(id, SEL)>(retain)(object, objc::selector<"retain">());
        bucketOf(object).fetch_add(1, std::memory_order_relaxed);
    }
    ++entry->references;
    return entry;
}

Entry* share(Entry* entry) {
    if (!entry) return nullptr;
    const std::lock_guard lock(shardOf(entry->shard).mutex);
    ++entry->references;
    return entry;
}

void leave(Entry* entry) {
    if (!entry) return;
    Shard& shard = shardOf(entry->shard);
    id object = nullptr;
    {
        const std::lock_guard lock(shard.mutex);
        if (--entry->references > 0) return;
        if (entry->object) object = remove(shard, *entry);
    }
    delete entry;
    if (object) releaseForTable(object);
}

}  // namespace

Object::Object(objc::Object borrowed) : entry_(enter(borrowed.self)) {}
Object::Object(const Object& other) : entry_(share(other.entry_)) {}
Object::~Object() { leave(entry_); }

objc::Strong<> Object::load() const {
    if (!entry_) return {};
    const std::lock_guard lock(shardOf(entry_->shard).mutex);
    // An entry whose owners are gone is about to be removed by the one who went last.
    if (!entry_->object || isOwnedByTableAlone(*entry_)) return {};
    as<id(id, SEL)>(entry_->retain)(entry_->object, objc::selector<"retain">());
    return objc::Strong<>::adopt(objc::Object{entry_->object});
}

}  // namespace weak
