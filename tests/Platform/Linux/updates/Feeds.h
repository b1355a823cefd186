#pragma once

#include <string>

namespace quillon {

/// A feed with these items, in a namespace as feeds use it.
inline std::string feedOf(const std::string& items) {
    return R"(<?xml version="1.0" encoding="utf-8"?>
<rss version="2.0" xmlns:v="urn:example:versions" xmlns:atom="http://www.w3.org/2005/Atom">
  <channel>
    <title>Changes</title>
    <link>https://example.org/all</link>
)" + items +
           "</channel></rss>\n";
}

/// An item whose enclosure has the version, and more in it.
inline std::string itemOf(const std::string& version, const std::string& more = {},
                          const std::string& attributes = {}) {
    return "<item><enclosure url=\"https://example.org/a.deb\" v:version=\"" + version + "\" " +
           attributes + "/>" + more + "</item>";
}

} // namespace quillon
