// The one state of the Recents screen, kept until the process ends.
#include "plugin/recents/recents_list.h"

#include "plugin/host/kept.h"

namespace recents {
namespace {
host::Kept<rows::CallListState> kept;
}  // namespace

rows::CallListState& recentsState() { return *kept; }

}  // namespace recents
