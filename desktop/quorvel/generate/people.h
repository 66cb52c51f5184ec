// The people whom made-up calls are with: what their calls say of them, and what their cards do.
#pragma once

#include <span>
#include <string>

namespace quorvel {

struct MadeUpPerson {
    const char* prefix;
    const char* firstName;
    const char* lastName;
    const char* address;  ///< the number or e-mail address that they call from
    const char* label;    ///< of the address: "mobile", "home", "work" or "other"
    const char* location;

    // On their cards alone; empty for none.
    const char* organization;
    const char* number;  ///< another one, at work
    const char* email;
    const char* birthday;
};

/// The same ones each time, the most called first.
std::span<const MadeUpPerson> madeUpPeople();

/// Prefix, first and last name with blanks between them, as the address book shows it.
std::string nameOf(const MadeUpPerson& person);

}  // namespace quorvel
