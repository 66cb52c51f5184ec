// The arguments of a traced call: found by the x86-64 calling convention and printed by their types.
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <optional>
#include <set>

#include "desktop/substrate/trace_state.h"

namespace substrate::trace {
namespace {

/// Finds argument after argument: in the registers of its kind while there are any, else on the stack.
class ArgumentReader {
  public:
    ArgumentReader(const SavedRegisters& registers, const std::uint64_t* stack, std::size_t generalTaken)
        : registers_(registers), stack_(stack), general_(generalTaken) {}

    /// The bytes of the next argument, or nothing when its type is not known (and then of all that follow).
    std::optional<std::vector<unsigned char>> next(const Type& type) {
        if (lost_ || type.size == 0) {
            lost_ = true;
            return std::nullopt;
        }
        std::vector<unsigned char> bytes((type.size + 7) / 8 * 8);
        std::vector<bool> floating(bytes.size() / 8, true);
        classify(type, 0, floating);
        std::size_t vectors = 0;
        for (bool word : floating) vectors += word;
        std::size_t generals = floating.size() - vectors;
        bool inRegisters = !type.inMemory() && general_ + generals <= 6 && vector_ + vectors <= 8;
        for (std::size_t word = 0; word < floating.size(); ++word) {
            const void* from = nullptr;
            if (!inRegisters)
                from = stack_++;
            else if (floating[word])
                from = registers_.vectors[vector_++];
            else
                from = &registers_.general[general_++];
            std::memcpy(bytes.data() + word * 8, from, 8);
        }
        return bytes;
    }

  private:
    /// Marks the eight-byte words that hold anything but floating point numbers.
    static void classify(const Type& type, std::size_t offset, std::vector<bool>& floating) {
        if (!type.isStructure()) {
            if (!type.isFloating()) floating[offset / 8] = false;
            return;
        }
        std::size_t at = 0;
        for (const Type& member : type.members) {
            at = (at + member.alignment - 1) / member.alignment * member.alignment;
            classify(member, offset + at, floating);
            at += member.size;
        }
    }

    const SavedRegisters& registers_;
    const std::uint64_t* stack_;
    std::size_t general_;
    std::size_t vector_ = 0;
    bool lost_ = false;
};

/// The word at an address, if memory can be read there. The kernel does the reading, so that any number can be tried.
std::optional<std::uint64_t> wordAt(std::uint64_t address) {
    int ends[2];
    if (address % 8 != 0 || pipe2(ends, O_CLOEXEC) != 0) return std::nullopt;
    std::uint64_t word = 0;
    bool readable = syscall(SYS_write, ends[1], address, sizeof word) == sizeof word &&
                    read(ends[0], &word, sizeof word) == static_cast<ssize_t>(sizeof word);
    close(ends[0]);
    close(ends[1]);
    return readable ? std::optional(word) : std::nullopt;
}

/// Whether a class is at that address.
bool isClass(std::uint64_t address) {
    static auto* mutex = new std::mutex;
    static auto* known = new std::set<std::uint64_t>;
    {
        std::lock_guard lock(*mutex);
        if (known->contains(address)) return true;
    }
    std::vector<Class> classes(static_cast<std::size_t>(objc_getClassList(nullptr, 0)));
    int count = objc_getClassList(classes.data(), static_cast<int>(classes.size()));
    std::lock_guard lock(*mutex);
    for (int i = 0; i < count && i < static_cast<int>(classes.size()); ++i)
        known->insert(reinterpret_cast<std::uint64_t>(classes[static_cast<std::size_t>(i)]));
    return known->contains(address);
}

std::string quotedText(objc::Object string) {
    const char* text = objc::send<"UTF8String", const char*>(string);
    std::string quoted = "\"";
    for (const char* at = text ? text : ""; *at; ++at) {
        if (*at == '\n') {
            quoted += "\\n";
            continue;
        }
        if (*at == '"' || *at == '\\') quoted += '\\';
        quoted += *at;
    }
    return quoted + "\"";
}

/// The object at that address as the trace prints it, or nothing when no object is there.
std::optional<std::string> printedObject(std::uint64_t address) {
    if (address == 0) return "nil";
    if (isClass(address)) return class_getName(reinterpret_cast<Class>(address));
    auto isa = wordAt(address);
    if (!isa || !isClass(*isa)) return std::nullopt;
    objc::Object object{reinterpret_cast<id>(address)};
    Class cls = object_getClass(object.self);
    for (Class above = cls; above; above = class_getSuperclass(above)) {
        objc::AutoreleasePool pool;
        if (above == objc::classNamed<"NSString">()) return quotedText(object);
        if (above == objc::classNamed<"NSNumber">())
            return objc::send<"UTF8String", const char*>(objc::send<"stringValue", objc::Object>(object));
    }
    return std::string("<") + class_getName(cls) + ">";
}

std::string printedReal(double value) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return text.data();
}

template <class T>
T valueOf(const unsigned char* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

/// A 32-bit integer; but a type string of a plug-in's own may say so where an object is passed.
template <class T>
std::string printedWord(const unsigned char* bytes, std::size_t room) {
    if (room >= 8) {
        auto whole = valueOf<std::uint64_t>(bytes);
        if (whole >> 32 != 0 && whole >> 32 != 0xffffffff) {
            if (auto object = printedObject(whole)) return *object;
        }
    }
    return std::to_string(valueOf<T>(bytes));
}

std::string printed(const Type& type, const unsigned char* bytes, std::size_t room);

std::string printedStructure(const Type& type, const unsigned char* bytes) {
    std::string text = "{";
    std::size_t at = 0;
    for (const Type& member : type.members) {
        at = (at + member.alignment - 1) / member.alignment * member.alignment;
        if (at != 0) text += ", ";
        text += printed(member, bytes + at, member.size);
        at += member.size;
    }
    return text + "}";
}

/// A value of `type`, of which `room` bytes can be looked at.
std::string printed(const Type& type, const unsigned char* bytes, std::size_t room) {
    switch (type.code) {
        case 'B':
        case 'C':
            if (*bytes > 1) return std::to_string(*bytes);
            return *bytes ? "YES" : "NO";
        case 'c':
            return std::to_string(valueOf<signed char>(bytes));
        case 's':
            return std::to_string(valueOf<short>(bytes));
        case 'S':
            return std::to_string(valueOf<unsigned short>(bytes));
        case 'i':
            return printedWord<std::int32_t>(bytes, room);
        case 'I':
            return printedWord<std::uint32_t>(bytes, room);
        case 'l':
        case 'q':
            return std::to_string(valueOf<std::int64_t>(bytes));
        case 'L':
        case 'Q':
            return std::to_string(valueOf<std::uint64_t>(bytes));
        case 'f':
            return printedReal(valueOf<float>(bytes));
        case 'd':
            return printedReal(valueOf<double>(bytes));
        case ':': {
            auto selector = valueOf<SEL>(bytes);
            return selector ? sel_getName(selector) : "nil";
        }
        case '@':
        case '#': {
            auto address = valueOf<std::uint64_t>(bytes);
            if (auto object = printedObject(address)) return *object;
            auto number = static_cast<std::int64_t>(address);
            return number == static_cast<std::int32_t>(number) ? std::to_string(number) : "?";
        }
        case '{':
            return printedStructure(type, bytes);
        default:
            return "?";
    }
}

}  // namespace

std::string printedArguments(const Signature& signature, bool resultInMemory, const SavedRegisters& registers,
                             const std::uint64_t* stack) {
    ArgumentReader reader(registers, stack, resultInMemory ? 3 : 2);
    std::string text;
    for (const Type& type : signature.arguments) {
        auto bytes = reader.next(type);
        text += " " + (bytes ? printed(type, bytes->data(), bytes->size()) : std::string("?"));
    }
    return text;
}

}  // namespace substrate::trace
