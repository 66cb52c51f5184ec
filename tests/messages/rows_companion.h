// The companion as taps on rows and the contact cards ask for it: entries, settings, queries, contacts. What it is
// asked is written down in one list with what the address book and the traced screens are sent.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/addressbook.h"
#include "plugin/companion/entry.h"

namespace rowsmessages {

/// What happened, in order.
std::vector<std::string>& events();

/// An entry's fields; null texts are nil.
struct Call {
    const char* number = "+4930100";
    const char* name = nullptr;
    const char* location = nullptr;
    int record = -1;
    int date = 1718452800;  // noon of 15 June 2024 in UTC
    bool isOutgoing = false;
    bool isMissed = false;
    bool isFaceTime = false;
    bool isFaceTimeVideo = false;
};
objc::Strong<QVCallEntry> entryOf(const Call& call);

/// What it holds and answers; reset before each test.
struct Companion {
    // Settings.
    bool isReplaceRecentsOn = true;
    bool isCallOnTap = false;
    bool isGroupByDate = false;
    bool isFaceTimeEnabled = true;
    int pageSize = 50;

    // Which system it runs on.
    bool isPreIOS4 = false;
    bool isIOS7 = true;

    /// The list that the screen loads.
    objc::Strong<NSMutableArray> calls = NSMutableArray::make();
    /// What a query answers; empty lists without it.
    std::function<std::vector<Call>(const std::string& query)> result;
    /// Answers nil to every query.
    bool answersNoList = false;
    /// What getPersonRecordFromDB: answers.
    std::function<objc::Object(int record)> person;
    long numberIndex = 0;
    long emailIndex = -1;
};
Companion& companion();

/// The day format of the shared formatter.
std::string sharedDateFormat();

/// Registers the companion's classes.
void registerCompanion();
void resetCompanion();

std::string utf8(objc::Object text);

}  // namespace rowsmessages
