#include "Hub/InstalledToolRecord.h"

#include "Hub/FlatObjects.h"

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>
#include <cstdio>

namespace quillon {

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

struct Field {
    static constexpr const char* id = "id";
    static constexpr const char* version = "version";
    static constexpr const char* installedAt = "installedAt";
    static constexpr const char* isEnabled = "isEnabled";
    static constexpr const char* isDownloaded = "isDownloaded";
};

/// Takes decimal digits and fixed characters off the front of a text.
class FixedText {
  public:
    explicit FixedText(std::string_view rest) : rest_(rest) {}

    [[nodiscard]] std::optional<int> digits(std::size_t count) {
        int number = 0;
        const auto text = rest_.substr(0, count);
        const auto* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, number);
        if (text.size() != count || text.starts_with('-') || error != std::errc() || stop != end) {
            return std::nullopt;
        }
        rest_.remove_prefix(count);
        return number;
    }

    [[nodiscard]] bool skip(char wanted) {
        if (!rest_.starts_with(wanted)) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    [[nodiscard]] bool isAtEnd() const { return rest_.empty(); }

  private:
    std::string_view rest_;
};

/// Two numbers of two digits with a colon between; the second is below 60.
std::optional<minutes> hoursAndMinutes(FixedText& text) {
    constexpr int mostHours = 23;
    constexpr int mostMinutes = 59;
    const auto hour = text.digits(2);
    if (!hour || *hour > mostHours || !text.skip(':')) {
        return std::nullopt;
    }
    const auto minute = text.digits(2);
    if (!minute || *minute > mostMinutes) {
        return std::nullopt;
    }
    return hours(*hour) + minutes(*minute);
}

std::optional<std::chrono::sys_days> date(FixedText& text) {
    const auto year = text.digits(4);
    if (!year || !text.skip('-')) {
        return std::nullopt;
    }
    const auto month = text.digits(2);
    if (!month || !text.skip('-')) {
        return std::nullopt;
    }
    const auto day = text.digits(2);
    if (!day) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day))};
    return date.ok() ? std::optional(std::chrono::sys_days(date)) : std::nullopt;
}

/// How far the zone is ahead of UTC.
std::optional<minutes> zone(FixedText& text) {
    if (text.skip('Z')) {
        return minutes(0);
    }
    const bool ahead = text.skip('+');
    if (!ahead && !text.skip('-')) {
        return std::nullopt;
    }
    const auto offset = hoursAndMinutes(text);
    return !offset || ahead ? offset : std::optional(-*offset);
}

} // namespace

std::string internetDateTime(std::chrono::sys_seconds moment) {
    const auto day = std::chrono::floor<days>(moment);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(moment - day);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", int(date.year()),
                  unsigned(date.month()), unsigned(date.day()), int(time.hours().count()),
                  int(time.minutes().count()), int(time.seconds().count()));
    return text.data();
}

std::optional<std::chrono::sys_seconds> parseInternetDateTime(std::string_view text) {
    constexpr int mostSeconds = 59;
    FixedText rest(text);
    const auto day = date(rest);
    if (!day || !rest.skip('T')) {
        return std::nullopt;
    }
    const auto time = hoursAndMinutes(rest);
    if (!time || !rest.skip(':')) {
        return std::nullopt;
    }
    const auto second = rest.digits(2);
    if (!second || *second > mostSeconds) {
        return std::nullopt;
    }
    const auto ahead = zone(rest);
    if (!ahead || !rest.isAtEnd()) {
        return std::nullopt;
    }
    const auto moment = *day + *time + seconds(*second) - *ahead;
    // Another zone's first or last hours may be in a year that has no four digits.
    constexpr int lastYear = 9999;
    const auto year = std::chrono::year_month_day(std::chrono::floor<days>(moment)).year();
    return year >= std::chrono::year(0) && year <= std::chrono::year(lastYear)
               ? std::optional(moment)
               : std::nullopt;
}

std::string encodeRecords(const InstalledTools& records) {
    constexpr int indentation = 2;
    auto document = nlohmann::ordered_json::array(); // fields stay in the order in which they are
    for (const auto& record : records) {
        document.push_back({{Field::id, record.id},
                            {Field::version, record.version},
                            {Field::installedAt, internetDateTime(record.installedAt)},
                            {Field::isEnabled, record.isEnabled},
                            {Field::isDownloaded, record.isDownloaded}});
    }
    // What is no UTF-8 cannot be in JSON. It is not in our ids and versions, nor in a catalog's.
    return document.dump(indentation, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

std::optional<InstalledTools> decodeRecords(std::string_view document) {
    InstalledTools records;
    const bool isIntact = readFlatObjects(document, [&](const FlatObject& object) {
        InstalledToolRecord record;
        std::string installedAt;
        if (!object.take(Field::id, record.id) || !object.take(Field::version, record.version) ||
            !object.take(Field::installedAt, installedAt) ||
            !object.take(Field::isEnabled, record.isEnabled) ||
            !object.take(Field::isDownloaded, record.isDownloaded)) {
            return false;
        }
        const auto moment = parseInternetDateTime(installedAt);
        if (moment) {
            record.installedAt = *moment;
            records.push_back(std::move(record));
        }
        return moment.has_value();
    });
    return isIntact ? std::optional(std::move(records)) : std::nullopt;
}

} // namespace quillon
