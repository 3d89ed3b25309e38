#pragma once

#include <memory>
#include <vector>

namespace qb {

class TabRowProviderInformation;

/// Every kind of provider that a row can have, in the order in which the user is offered them.
/// Saved rows find their provider here too.
std::vector<std::shared_ptr<TabRowProviderInformation>> tabRowProviderCatalogue();

}  // namespace qb
