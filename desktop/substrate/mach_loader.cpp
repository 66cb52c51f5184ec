// From a parsed image to one that has run its initialisers.
#include "desktop/substrate/mach_loader.h"

#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <vector>

#include "desktop/substrate/handset_files.h"
#include "desktop/substrate/mach_image.h"
#include "desktop/substrate/mach_messages.h"
#include "objc/target.h"
#include "objc/thread_sanitizer.h"

namespace substrate::mach {
namespace {

#if defined(OBJC_THREAD_SANITIZER)
/// Reports cannot name the functions of an image; from here their offsets in it can be read off.
constexpr std::uintptr_t wishedAddress = 0x7F0000000000;
#else
constexpr std::uintptr_t wishedAddress = 0;
#endif

void bindLazily() {
    std::fputs("a Mach-O image asked for a symbol that was bound when it was loaded\n", stderr);
    std::abort();
}

Class classOfObject(id object) { return object_getClass(object); }

void zero(void* memory, std::size_t size) { std::memset(memory, 0, size); }

template <class Function>
void* addressOf(Function* function) {
    return reinterpret_cast<void*>(function);
}

/// What the handset's libraries have under names that this system's do not.
const std::map<std::string, void*>& ownSymbols() {
    static const std::map<std::string, void*> symbols{
        {"_objc_msgSend", addressOf(&substrate_msgSend)},
        {"_objc_msgSend_stret", addressOf(&substrate_msgSend_stret)},
        {"_objc_msgSendSuper", addressOf(&substrate_msgSendSuper)},
        {"_objc_msgSendSuper_stret", addressOf(&substrate_msgSendSuper_stret)},
        // (The runtime here has it in its header alone.)
        {"_object_getClass", addressOf(&classOfObject)},
        {"___stderrp", &stderr},
        {"_fopen", addressOf(&__wrap_fopen)},
        {"_freopen", addressOf(&__wrap_freopen)},
        {"_bzero", addressOf(&zero)},
        {"dyld_stub_binder", addressOf(&bindLazily)},
        // Clang's names, in an instrumented image, for what the sanitizer's runtime has under the plain ones.
        {"___tsan_memcpy", addressOf(&std::memcpy)},
        {"___tsan_memmove", addressOf(&std::memmove)},
        {"___tsan_memset", addressOf(&std::memset)}};
    return symbols;
}

void* addressOfSymbol(const std::string& name) {
    const auto& own = ownSymbols();
    if (const auto found = own.find(name); found != own.end()) return found->second;
    if (name.empty() || name.front() != '_') return nullptr;
    return dlsym(RTLD_DEFAULT, name.c_str() + 1);
}

/// The image in memory; taken away again unless it is kept.
class Mapping {
  public:
    explicit Mapping(const Image& image) : image_(image) {
        void* wish = reinterpret_cast<void*>(wishedAddress);
        void* memory = mmap(wish, image.extent, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) return;
        base_ = static_cast<std::byte*>(memory);
        for (const auto& segment : image.segments)
            if (!segment.content.empty())
                std::memcpy(at(segment.address), segment.content.data(), segment.content.size());
    }
    ~Mapping() {
        if (base_) munmap(base_, image_.extent);
    }
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;

    explicit operator bool() const { return base_ != nullptr; }
    void keep() { base_ = nullptr; }
    /// How far everything lies above the address that it was linked for.
    std::uint64_t slide() const { return reinterpret_cast<std::uint64_t>(base_) - image_.lowest; }
    std::byte* at(std::uint64_t linkedAddress) const { return base_ + (linkedAddress - image_.lowest); }
    /// A place that the fix-ups have been checked for.
    std::byte* at(Place place) const { return at(image_.segments[place.segment].address) + place.offset; }
    std::uint64_t read(const std::byte* from) const {
        std::uint64_t value = 0;
        std::memcpy(&value, from, sizeof value);
        return value;
    }
    void write(std::byte* to, std::uint64_t value) const { std::memcpy(to, &value, sizeof value); }

    bool protect() const {
        const auto page = static_cast<std::uint64_t>(getpagesize());
        for (const auto& segment : image_.segments) {
            const int protection =
                PROT_READ | (segment.isWritable ? PROT_WRITE : 0) | (segment.isExecutable ? PROT_EXEC : 0);
            const std::uint64_t size = (segment.size + page - 1) / page * page;
            if (size > 0 && mprotect(at(segment.address), size, protection) != 0) return false;
        }
        return true;
    }

  private:
    const Image& image_;
    std::byte* base_ = nullptr;
};

std::string rebase(const Image& image, const Mapping& mapping) {
    auto places = rebasesOf(image);
    if (auto* trouble = std::get_if<std::string>(&places)) return *trouble;
    for (const Place place : std::get<std::vector<Place>>(places)) {
        auto* pointer = mapping.at(place);
        mapping.write(pointer, mapping.read(pointer) + mapping.slide());
    }
    return {};
}

std::string bind(const Image& image, const Mapping& mapping) {
    auto binds = bindsOf(image);
    if (auto* trouble = std::get_if<std::string>(&binds)) return *trouble;
    for (const auto& each : std::get<std::vector<Bind>>(binds)) {
        void* address = addressOfSymbol(each.symbol);
        if (!address && !each.isWeak) return "asks for " + each.symbol + ", which no library of this handset has";
        const auto value = address ? reinterpret_cast<std::uint64_t>(address) + static_cast<std::uint64_t>(each.addend)
                                   : std::uint64_t{0};
        mapping.write(mapping.at(each.place), value);
    }
    return {};
}

/// Whether the file puts a function at the address, as linked.
bool isCode(const Image& image, std::uint64_t address) {
    for (const auto& segment : image.segments)
        if (segment.isExecutable && address >= segment.address && address - segment.address < segment.content.size())
            return true;
    return false;
}

/// The functions to call, each checked to be code of the file.
std::variant<std::vector<void (*)()>, std::string> initialisersOf(const Image& image, const Mapping& mapping) {
    std::vector<void (*)()> functions;
    for (const auto& pointers : image.initialisers) {
        for (std::uint64_t i = 0; i < pointers.count; ++i) {
            const std::uint64_t address = mapping.read(mapping.at(pointers.address) + i * 8) - mapping.slide();
            if (!isCode(image, address)) return "has an initialiser that is no code";
            functions.push_back(reinterpret_cast<void (*)()>(mapping.at(address)));
        }
    }
    return functions;
}

}  // namespace

std::optional<std::string> load(std::span<const std::byte> file) {
    auto parsed = parse(file);
    if (auto* trouble = std::get_if<std::string>(&parsed)) return *trouble;
    const auto& image = std::get<Image>(parsed);

    Mapping mapping(image);
    if (!mapping) return "does not fit into memory";
    if (auto trouble = rebase(image, mapping); !trouble.empty()) return trouble;
    if (auto trouble = bind(image, mapping); !trouble.empty()) return trouble;
    auto initialisers = initialisersOf(image, mapping);
    if (auto* trouble = std::get_if<std::string>(&initialisers)) return *trouble;
    if (!mapping.protect()) return "cannot be made executable here";
    const auto functions = std::get<std::vector<void (*)()>>(initialisers);
    mapping.keep();
    for (auto* function : functions) function();
    return std::nullopt;
}

}  // namespace substrate::mach
