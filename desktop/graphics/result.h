// A value, or the text that says why there is none.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace graphics {

/// Why something could not be done, in a sentence for the person who runs the program.
struct Failure {
    std::string text;
};

template <class Value>
class Result {
  public:
    Result(Value value) : content_(std::in_place_index<0>, std::move(value)) {}
    Result(Failure failure) : content_(std::in_place_index<1>, std::move(failure)) {}

    explicit operator bool() const { return content_.index() == 0; }

    /// Only where there is a value.
    Value& operator*() { return std::get<0>(content_); }
    const Value& operator*() const { return std::get<0>(content_); }
    Value* operator->() { return &std::get<0>(content_); }
    const Value* operator->() const { return &std::get<0>(content_); }

    /// Empty where there is a value.
    std::string error() const { return *this ? std::string() : std::get<1>(content_).text; }

  private:
    std::variant<Value, Failure> content_;
};

}  // namespace graphics
