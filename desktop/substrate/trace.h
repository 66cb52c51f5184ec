// The message trace: prints what objects of chosen classes are sent, as it happens. It sees every message because this
// library's objc_msg_lookup and get_imp stand before the runtime's own: a program links it before the object runtime.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace substrate::trace {

/// Takes one line, without a line break. Called on the thread that sends the message, before the method runs, one call
/// at a time. Messages that it sends itself are not traced.
using Sink = std::function<void(const std::string& line)>;

/// Whether retain, release and autorelease are printed.
enum class Ownership { shown, leftOut };

/// From now on every message to an object of one of these classes, or of a class below one, and to such a class itself,
/// makes a line `-[CLASS selector] ARG ...` or `+[CLASS selector] ARG ...`, where CLASS is the receiver's own class.
/// Super sends make none. Takes the place of a trace that is under way. Answers an error in one line, and changes
/// nothing, when a class does not exist or this processor is not supported. Any thread.
///
/// Arguments are decoded by the method's type string: "text" (a string, with \" \\ and \n escaped), numbers by value,
/// nil, <ClassName> for other objects, YES or NO, %g for floating point, {x, y} and {{x, y}, {w, h}} for structures,
/// selectors and classes by name, ? for what the type string does not tell. Where a value cannot be what the type
/// string says (no object lies there), it is printed as what it is: an object, a number, or else ?.
std::optional<std::string> begin(const std::vector<std::string>& classes, Sink sink,
                                 Ownership ownership = Ownership::shown);

/// Ends the trace. Once this has returned the sink is not called again. Never called by the sink itself, nor is begin.
void end();

/// Says what the arguments of a selector are, where the installed type string does not: `types` is a type string of the
/// runtime's usual form, such as "v@:Cd". Holds for all classes and later traces.
void describe(const std::string& selector, const std::string& types);

}  // namespace substrate::trace
