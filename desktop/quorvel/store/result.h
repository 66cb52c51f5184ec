// A value, or the error that says what went wrong, where, and what can be done about it.
#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace quorvel::store {

enum class ErrorKind {
    unreadable,  ///< The file cannot be opened, or its folder cannot be written.
    foreign,     ///< The file is something else than a call log.
    damaged,     ///< The file is a call log, and its contents contradict themselves.
    newer,       ///< A later version of the program wrote the file.
    readOnly,    ///< The store was opened for reading only.
    busy,        ///< Another process kept the log for longer than the bound.
    full,        ///< The disk is full.
    badInput,    ///< An argument makes no sense; nothing was done.
    failed,      ///< Anything else that SQLite reports: an input or output error, no memory, an interruption.
};

struct Error {
    ErrorKind kind = ErrorKind::failed;
    /// One sentence or two for the person who runs the program.
    std::string message;
};

/// The value of an operation that has none.
struct Done {};

template <class Value>
class [[nodiscard]] Result {
  public:
    Result(Value value) : content_(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : content_(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const { return content_.index() == 0; }
    bool ok() const { return content_.index() == 0; }

    /// Only where there is a value.
    Value& operator*() & { return get(); }
    Value&& operator*() && { return std::move(get()); }
    const Value& operator*() const& { return get(); }
    Value* operator->() { return &get(); }
    const Value* operator->() const { return &get(); }

    /// Only where there is none.
    const Error& error() const {
        assert(!ok());
        return std::get<1>(content_);
    }

    /// The value, or the given one where there is none.
    Value valueOr(Value otherwise) const& { return ok() ? get() : std::move(otherwise); }
    Value valueOr(Value otherwise) && { return ok() ? std::move(get()) : std::move(otherwise); }

  private:
    Value& get() {
        assert(ok());
        return std::get<0>(content_);
    }
    const Value& get() const {
        assert(ok());
        return std::get<0>(content_);
    }

    std::variant<Value, Error> content_;
};

}  // namespace quorvel::store
