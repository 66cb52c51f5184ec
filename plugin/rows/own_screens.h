// The plug-in's own screens as the rows open them: found by name, because they are built upon the rows.
#pragma once

#include "platform/uikit_screens.h"
#include "plugin/companion/entry.h"

/// Every call of one contact or number. Null from make() where the class is not there.
struct QVLogViewController : UIViewController {
    static constexpr objc::Name className{"QVLogViewController"};

    static objc::Strong<QVLogViewController> make() {
        return objc::make<QVLogViewController>(objc::classNamed<className>());
    }
    void setEntry(QVCallEntry entry) const { objc::send<"setEntry:">(*this, entry); }
    /// Not retained. It is sent `entryDeleted:` when the screen goes after deletions.
    void setDelegate(Object delegate) const { objc::send<"setDelegate:">(*this, delegate); }
};

/// The calls of one day. Null from make() where the class is not there.
struct QVDateLogViewController : UIViewController {
    static constexpr objc::Name className{"QVDateLogViewController"};

    static objc::Strong<QVDateLogViewController> make() {
        return objc::make<QVDateLogViewController>(objc::classNamed<className>());
    }
    /// An entry that stands for a day.
    void setDateEntry(QVCallEntry entry) const { objc::send<"setDateEntry:">(*this, entry); }
};
