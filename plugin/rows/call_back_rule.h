// How a call is placed again. A choice alone.
#pragma once

namespace rows {

enum class Scheme { Telephone, FaceTimeAudio, FaceTimeVideo };

/// A FaceTime call goes back the way it came, unless the user has switched FaceTime off; then, and for every other
/// call, it is the telephone.
constexpr Scheme schemeOf(bool isFaceTime, bool isFaceTimeVideo, bool isFaceTimeEnabled) {
    if (!isFaceTime || !isFaceTimeEnabled) return Scheme::Telephone;
    return isFaceTimeVideo ? Scheme::FaceTimeVideo : Scheme::FaceTimeAudio;
}

constexpr const char* prefixOf(Scheme scheme) {
    switch (scheme) {
        case Scheme::FaceTimeVideo:
            return "facetime://";
        case Scheme::FaceTimeAudio:
            return "facetime-audio://";
        default:
            return "tel://";
    }
}

}  // namespace rows
