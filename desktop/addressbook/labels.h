// Labels of values: what they are in the address book, in vCards, and for people.
#pragma once

#include <string>
#include <string_view>

#include "desktop/addressbook/contact.h"
#include "desktop/addressbook/vcard.h"

namespace contacts::label {

constexpr const char* home = "_$!<Home>!$_";
constexpr const char* work = "_$!<Work>!$_";
constexpr const char* other = "_$!<Other>!$_";
constexpr const char* mobile = "_$!<Mobile>!$_";
constexpr const char* iPhone = "iPhone";
constexpr const char* mainNumber = "_$!<Main>!$_";
constexpr const char* homeFax = "_$!<HomeFAX>!$_";
constexpr const char* workFax = "_$!<WorkFAX>!$_";
constexpr const char* otherFax = "_$!<OtherFAX>!$_";
constexpr const char* pager = "_$!<Pager>!$_";
constexpr const char* homePage = "_$!<HomePage>!$_";
constexpr const char* anniversary = "_$!<Anniversary>!$_";
constexpr const char* spouse = "_$!<Spouse>!$_";

/// The label that the types of a vCard's property say; empty for none. A type of nobody's is an own label.
std::string ofTypes(const vcard::Property& property);

/// Gives the property the types of the label. Answers whether they say it whole; where not, an X-ABLabel must.
bool addTypes(vcard::Property& property, std::string_view label);

/// The label for people in that language ("mobile", "Mobil"); an own label as it is, and one that is not known without
/// its marks.
std::string forPeople(std::string_view label, std::string_view language);

/// The form in which the call log and its exports hold a label, the same in every language: the English word of a known
/// label ("mobile"), given as the address book has it or as a word of any language here; an own label as it is.
std::string inLog(std::string_view label);

/// What the log holds, for people in that language. Words of another language, which former versions stored, are
/// understood; an own label is answered as it is.
std::string ofLog(std::string_view text, std::string_view language);

/// The property's name for people in that language ("Phone"); empty for those that are not shown by name.
std::string ofProperty(Property property, std::string_view language);

}  // namespace contacts::label
