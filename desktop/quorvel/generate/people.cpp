// The made-up people.
#include "desktop/quorvel/generate/people.h"

namespace quorvel {
namespace {

constexpr MadeUpPerson people[] = {
    {"", "Anna", "Berg", "+493012345601", "mobile", "Berlin", "Harbour Museum", "+493012345611",
     "anna.berg@example.org", "1984-02-28"},
    {"", "Jonas", "Weiß", "+498912345602", "home", "München", "", "", "jonas@example.net", ""},
    {"", "Мария", "Соколова", "+74951234567", "mobile", "Москва", "", "", "", "--11-03"},
    {"", "Lucía", "Fernández", "+34911234568", "work", "Madrid", "Librería del Sol", "", "lucia@example.com", ""},
    {"", "ليلى", "حداد", "+9611234567", "mobile", "", "", "", "", ""},
    {"", "Thomas", "Albrecht", "+494012345603", "work", "Hamburg", "Albrecht & Sons", "+494012345613", "", ""},
    {"", "Ines", "Moreau", "+33112345671", "mobile", "Paris", "", "", "ines.moreau@example.org", ""},
    {"", "Oliver", "Grant", "+442012345672", "mobile", "London", "", "", "", ""},
    {"", "Sofia", "Lindqvist", "+46812345673", "home", "Stockholm", "", "", "sofia@example.net", "1991-07-19"},
    {"", "Mum ❤", "", "+493012345609", "home", "Berlin", "", "", "", "--05-12"},
    {"Dr.", "Petra", "Hollmann-Winterfeld", "+493012345610", "work", "Berlin", "Children's Practice", "", "", ""},
    {"", "Matteo", "Ricci", "matteo.ricci@example.org", "home", "", "", "", "", ""},
    {"", "Kenji", "", "kenji@example.net", "other", "", "", "", "", ""},
};

}  // namespace

std::span<const MadeUpPerson> madeUpPeople() { return people; }

std::string nameOf(const MadeUpPerson& person) {
    std::string name;
    for (const std::string part : {person.prefix, person.firstName, person.lastName})
        if (!part.empty()) name += (name.empty() ? "" : " ") + part;
    return name;
}

}  // namespace quorvel
