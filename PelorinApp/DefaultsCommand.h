#pragma once

#include "CommandLine.h"
#include "Platform/UserDefaults.h"

#include <functional>
#include <iosfwd>

namespace quillon {

/// `quillon defaults`: reads or changes one stored setting. `flush` brings changes to the disk and
/// says whether they got there. Answers the exit status: 0; 1 when there is no such setting or it
/// could not be stored; 2 for a value that no setting can have.
int defaultsCommand(const DefaultsRequest& request, UserDefaultsStores& stores,
                    const std::function<bool()>& flush, std::ostream& out, std::ostream& err);

} // namespace quillon
