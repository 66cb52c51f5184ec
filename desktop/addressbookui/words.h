// What the contact screens say, in the user's language.
#pragma once

#include <string>
#include <string_view>

namespace addressbookui {

enum class Word {
    done,
    cancel,
    edit,
    ok,
    sendMessage,
    faceTime,
    faceTimeAudio,
    shareContact,
    contactShared,
    cardWrittenTo,
    cardNotWritten,
    addToFavorites,
    removeFromFavorites,
    blockCaller,
    unblockCaller,
    blockExplanation,
    blockContact,
    deleteContact,
    createNewContact,
    addToExistingContact,
    newContact,
    allContacts,
    search,
    nobodyFound,
    linkedContacts,
    addPhone,
    addEmail,
    chooseLabel,
    noName,
    notSaved,
    noAccess,
};

/// In contacts::language(), in English where that language has no texts here.
std::string say(Word word);
/// The same with the argument in place of "%@".
std::string say(Word word, std::string_view argument);

}  // namespace addressbookui
