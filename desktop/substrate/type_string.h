// The runtime's type strings, read: what an argument is, how large, and how it travels on x86-64.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace substrate::trace {

/// One type out of a type string, without qualifiers, offsets and names.
struct Type {
    /// The encoding letter; '{' for a structure, '?' for what is not understood.
    char code = '?';
    std::size_t size = 0;
    std::size_t alignment = 1;
    /// A structure's members, in order.
    std::vector<Type> members;

    bool isFloating() const { return code == 'f' || code == 'd'; }
    bool isStructure() const { return code == '{'; }
    /// Whether a value of it travels in memory rather than in registers.
    bool inMemory() const { return isStructure() && size > 16; }
};

struct Signature {
    Type result;
    /// The arguments after receiver and selector, as many as the selector has colons; '?' where nothing is known.
    std::vector<Type> arguments;
};

/// Reads the type string of a method with that selector. Two forms are known: the runtime's own, "v24@0:8i16" or
/// "v@:i", and the one in which plug-ins write each argument with a receiver and a selector of its own: "v@:@i:@i"
/// for two integers. Which one is meant shows in the number of arguments, which the selector gives. A null string
/// knows nothing.
Signature readSignature(std::string_view selector, const char* types);

}  // namespace substrate::trace
