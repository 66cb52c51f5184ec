// The two forms of type strings.
#include "desktop/substrate/type_string.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace substrate::trace {
namespace {

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    bool atEnd() const { return text_.empty(); }
    bool accept(char letter) {
        if (text_.empty() || text_.front() != letter) return false;
        text_.remove_prefix(1);
        return true;
    }

    /// The next type with the digits behind it. Code '?' where it is not understood.
    Type type() {
        while (!text_.empty() && std::string_view("rnNoORVA").find(text_.front()) != std::string_view::npos)
            text_.remove_prefix(1);
        if (text_.empty()) return {};
        char code = text_.front();
        text_.remove_prefix(1);
        Type type = code == '{' ? structure() : simple(code);
        while (!text_.empty() && (std::isdigit(static_cast<unsigned char>(text_.front())) || text_.front() == '+' ||
                                  text_.front() == '-'))
            text_.remove_prefix(1);
        return type;
    }

  private:
    Type simple(char code) {
        switch (code) {
            case 'v':
                return {'v', 0, 1, {}};
            case 'c':
            case 'C':
            case 'B':
                return {code, 1, 1, {}};
            case 's':
            case 'S':
                return {code, 2, 2, {}};
            case 'i':
            case 'I':
            case 'f':
                return {code, 4, 4, {}};
            case 'l':
            case 'L':
            case 'q':
            case 'Q':
            case 'd':
            case '#':
            case ':':
            case '*':
                return {code, 8, 8, {}};
            case '@':
                if (accept('?')) return {'^', 8, 8, {}};  // a block
                if (accept('"')) skipPast('"');
                return {'@', 8, 8, {}};
            case '^':
                type();
                return {'^', 8, 8, {}};
            default:
                return {};
        }
    }

    Type structure() {
        Type whole{'{', 0, 1, {}};
        while (!text_.empty() && text_.front() != '=' && text_.front() != '}') text_.remove_prefix(1);
        bool hasMembers = accept('=');
        bool understood = hasMembers;
        while (!text_.empty() && !accept('}')) {
            if (accept('"')) {
                skipPast('"');
                continue;
            }
            Type member = type();
            if (member.code == '?') understood = false;
            whole.alignment = std::max(whole.alignment, member.alignment);
            whole.size = roundedUp(whole.size, member.alignment) + member.size;
            whole.members.push_back(std::move(member));
        }
        whole.size = roundedUp(whole.size, whole.alignment);
        return understood ? whole : Type{};
    }

    void skipPast(char letter) {
        std::size_t at = text_.find(letter);
        text_.remove_prefix(at == std::string_view::npos ? text_.size() : at + 1);
    }

    static std::size_t roundedUp(std::size_t size, std::size_t alignment) {
        return (size + alignment - 1) / alignment * alignment;
    }

    std::string_view text_;
};

/// "v@:@i": the receiver, the selector, then the arguments.
std::optional<Signature> readUsualForm(const char* types) {
    Reader reader(types);
    Signature signature{reader.type(), {}};
    if (reader.type().code != '@' || reader.type().code != ':') return std::nullopt;
    while (!reader.atEnd()) signature.arguments.push_back(reader.type());
    return signature;
}

/// "v@:@@:@i": the receiver, then ":@" or the reverse with the type between, for each argument.
std::optional<Signature> readGroupedForm(const char* types) {
    Reader reader(types);
    Signature signature{reader.type(), {}};
    if (!reader.accept('@')) return std::nullopt;
    while (!reader.atEnd()) {
        if (!reader.accept(':')) return std::nullopt;
        if (reader.accept('@')) {
            if (reader.atEnd()) return std::nullopt;
            signature.arguments.push_back(reader.type());
        } else {
            if (reader.atEnd()) return std::nullopt;
            signature.arguments.push_back(reader.type());
            if (!reader.accept('@')) return std::nullopt;
        }
    }
    return signature;
}

}  // namespace

Signature readSignature(std::string_view selector, const char* types) {
    auto expected = static_cast<std::size_t>(std::count(selector.begin(), selector.end(), ':'));
    Signature unknown{{}, std::vector<Type>(expected)};
    if (!types) return unknown;
    auto usual = readUsualForm(types);
    if (usual && usual->arguments.size() == expected) return *usual;
    auto grouped = readGroupedForm(types);
    if (grouped && grouped->arguments.size() == expected) return *grouped;
    if (usual) unknown.result = usual->result;
    return unknown;
}

}  // namespace substrate::trace
