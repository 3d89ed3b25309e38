#pragma once

#include <string_view>

#include "Platform/Processes.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// What the rows are told of the desktop at each opening: who was in front.
inline constexpr std::string_view kEnvironmentKeyFrontProcessSerialNumberHighLong =
    "kEnvironmentKeyFrontProcessSerialNumberHighLong";
inline constexpr std::string_view kEnvironmentKeyFrontProcessSerialNumberLowLong =
    "kEnvironmentKeyFrontProcessSerialNumberLowLong";

/// A boolean for key handlers: this press brought the panel up.
inline constexpr std::string_view kKeyIsApplicationInvocationKey = "kKeyIsApplicationInvocationKey";

PropertyList environmentWithFrontProcess(ProcessSerialNumber process);
ProcessSerialNumber frontProcessOfEnvironment(const PropertyList& environment);

}  // namespace qb
