#include "Platform/Linux/looks/XSettings.h"

#include <cstddef>

namespace quillon {

namespace {

/// Bytes that are read one after the other; past their end there is nothing.
class Reader {
  public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    std::optional<std::uint32_t> number(std::size_t length) {
        const auto bytes = text(length);
        if (!bytes) {
            return std::nullopt;
        }
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < length; ++i) {
            const std::size_t at = isBigEndian_ ? i : length - 1 - i;
            value = value << 8U | static_cast<unsigned char>((*bytes)[at]);
        }
        return value;
    }

    std::optional<std::string_view> text(std::size_t length) {
        if (bytes_.size() < length) {
            return std::nullopt;
        }
        const auto found = bytes_.substr(0, length);
        bytes_.remove_prefix(length);
        return found;
    }

    /// A text whose length is known, with what fills it up to a multiple of four.
    std::optional<std::string_view> paddedText(std::size_t length) {
        const auto found = text(length);
        return found && text((4 - length % 4) % 4) ? found : std::nullopt;
    }

    void setBigEndian(bool isBigEndian) { isBigEndian_ = isBigEndian; }

  private:
    std::string_view bytes_;
    bool isBigEndian_ = false;
};

enum Type : std::uint32_t { integer = 0, string = 1, color = 2 };

} // namespace

XSettings XSettings::parse(std::string_view bytes) {
    XSettings settings;
    Reader reader(bytes);
    const auto byteOrder = reader.number(1);
    reader.setBigEndian(byteOrder == 1U);
    if (!reader.text(3) || !reader.number(4)) { // the second: how often they have changed
        return settings;
    }
    const std::uint32_t count = reader.number(4).value_or(0);
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto type = reader.number(1);
        const auto unused = reader.number(1);
        const auto nameLength = reader.number(2);
        const auto name = unused && nameLength ? reader.paddedText(*nameLength) : std::nullopt;
        if (!name || !reader.number(4)) {
            return settings;
        }
        if (type == Type::integer) {
            if (const auto value = reader.number(4)) {
                settings.values_.insert_or_assign(std::string(*name),
                                                  static_cast<std::int32_t>(*value));
            }
        } else if (type == Type::string) {
            const auto length = reader.number(4);
            if (const auto value = length ? reader.paddedText(*length) : std::nullopt) {
                settings.values_.insert_or_assign(std::string(*name), std::string(*value));
            }
        } else if (type != Type::color || !reader.text(8)) {
            return settings;
        }
    }
    return settings;
}

std::optional<std::int32_t> XSettings::number(std::string_view name) const {
    const auto found = values_.find(name);
    const auto* value =
        found == values_.end() ? nullptr : std::get_if<std::int32_t>(&found->second);
    return value == nullptr ? std::nullopt : std::optional(*value);
}

std::optional<std::string> XSettings::text(std::string_view name) const {
    const auto found = values_.find(name);
    const auto* value = found == values_.end() ? nullptr : std::get_if<std::string>(&found->second);
    return value == nullptr ? std::nullopt : std::optional(*value);
}

} // namespace quillon
