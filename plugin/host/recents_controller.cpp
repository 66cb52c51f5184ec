// The one reference to the Recents screen, replaced by each load of its view and never cleared.
#include "plugin/host/recents_controller.h"

#include "objc/strong_slot.h"
#include "plugin/host/kept.h"

namespace host {
namespace {
Kept<objc::StrongSlot<PHRecentsViewController>> saved;
}

objc::Strong<PHRecentsViewController> recentsController() { return saved->load(); }

void setRecentsController(PHRecentsViewController controller) { saved->store(controller); }

}  // namespace host
