#include "Quillbox/activation/Environment.h"

namespace qb {

PropertyList environmentWithFrontProcess(ProcessSerialNumber process) {
  PropertyList environment = PropertyList::dictionary();
  environment.setLong(process.highLongOfPSN, kEnvironmentKeyFrontProcessSerialNumberHighLong);
  environment.setLong(process.lowLongOfPSN, kEnvironmentKeyFrontProcessSerialNumberLowLong);
  return environment;
}

ProcessSerialNumber frontProcessOfEnvironment(const PropertyList& environment) {
  const auto half = [&environment](std::string_view key) {
    return static_cast<std::uint32_t>(environment.longForKey(key));
  };
  return {half(kEnvironmentKeyFrontProcessSerialNumberHighLong),
          half(kEnvironmentKeyFrontProcessSerialNumberLowLong)};
}

}  // namespace qb
