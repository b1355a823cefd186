#pragma once

#include "Hub/InstalledToolRecord.h"

#include <charconv>
#include <cstddef>

namespace quillon {

/// What the writer program stores in its n-th save: of varying length, and such that a mixture of
/// two of them is none.
inline InstalledTools writtenRecords(int n) {
    InstalledTools records;
    const int count = 1 + n * 7 % 40;
    for (int i = 0; i < count; ++i) {
        records.push_back({.id = "tool." + std::to_string(i),
                           .version = std::to_string(n),
                           .installedAt = std::chrono::sys_seconds(std::chrono::seconds(n)),
                           .isEnabled = n % 2 == 0,
                           .isDownloaded = count % 2 == 0});
    }
    return records;
}

/// The n of complete records, or -1.
inline int saveThatGave(const InstalledTools& records) {
    int n = -1;
    if (!records.empty()) {
        const std::string& version = records.front().version;
        std::from_chars(version.data(), version.data() + version.size(), n);
    }
    return n >= 0 && writtenRecords(n) == records ? n : -1;
}

} // namespace quillon
