#include "Platform/Linux/session/DesktopEntry.h"

#include <QStringDecoder>

#include <algorithm>

namespace quillon {

namespace {

constexpr std::string_view entryBlanks = " \t\r\v\f";
constexpr std::string_view mainGroup = "[Desktop Entry]";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(entryBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(entryBlanks) - first + 1);
}

/// Takes the next line off the text.
std::string_view takeLine(std::string_view& text) {
    const auto end = std::min(text.find('\n'), text.size());
    const auto line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

bool isUtf8(std::string_view text) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    [[maybe_unused]] const QString decoded =
        decoder.decode(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    return !decoder.hasError();
}

/// What a letter after a backslash stands for in a value.
std::optional<char> escaped(char letter) {
    switch (letter) {
    case 's':
        return ' ';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case 'r':
        return '\r';
    case '\\':
        return '\\';
    default:
        return std::nullopt;
    }
}

/// Removes field codes, which stand for files that the user opens, and makes %% one %.
std::string withoutFieldCodes(std::string_view exec) {
    std::string result;
    for (std::size_t i = 0; i < exec.size(); ++i) {
        if (exec[i] != '%') {
            result += exec[i];
        } else if (++i < exec.size() && exec[i] == '%') {
            result += '%';
        }
    }
    return result;
}

/// Takes words apart as launchers do: more generously than they should be written.
class Words {
  public:
    explicit Words(std::string_view text) : text_(text) {}

    /// Nothing at the end, and when a quotation has no end.
    std::optional<std::string> next() {
        at_ = std::min(text_.find_first_not_of(" \t\n", at_), text_.size());
        if (at_ == text_.size()) {
            return std::nullopt;
        }
        std::string word;
        char quote = 0;
        for (; at_ < text_.size(); ++at_) {
            const char c = text_[at_];
            if (quote == 0 && (c == ' ' || c == '\t' || c == '\n')) {
                break;
            }
            if (c == quote) {
                quote = 0;
            } else if (quote == 0 && (c == '"' || c == '\'')) {
                quote = c;
            } else if (c == '\\' && isEscape(quote)) {
                word += text_[++at_];
            } else {
                word += c;
            }
        }
        broken_ = quote != 0;
        return broken_ ? std::nullopt : std::optional(word);
    }

    [[nodiscard]] bool isBroken() const { return broken_; }

  private:
    [[nodiscard]] bool isEscape(char quote) const {
        constexpr std::string_view escapedInQuotes = "\"`$\\";
        return at_ + 1 < text_.size() && quote != '\'' &&
               (quote == 0 || escapedInQuotes.find(text_[at_ + 1]) != std::string_view::npos);
    }

    std::string_view text_;
    std::size_t at_ = 0;
    bool broken_ = false;
};

} // namespace

std::optional<DesktopEntry> DesktopEntry::parse(std::string_view text) {
    DesktopEntry entry;
    bool inGroup = false;
    bool inMainGroup = false;
    bool hasMainGroup = false;
    while (!text.empty()) {
        const auto line = trimmed(takeLine(text));
        if (line.empty() || line.front() == '#') {
            continue;
        }
        if (line.front() == '[') {
            inGroup = true;
            inMainGroup = line == mainGroup;
            hasMainGroup = hasMainGroup || inMainGroup;
            continue;
        }
        const auto equals = line.find('=');
        if (!inGroup || equals == std::string_view::npos || equals == 0) {
            return std::nullopt;
        }
        if (inMainGroup) {
            entry.values_.insert_or_assign(std::string(trimmed(line.substr(0, equals))),
                                           std::string(trimmed(line.substr(equals + 1))));
        }
    }
    return hasMainGroup ? std::optional(std::move(entry)) : std::nullopt;
}

std::optional<std::string> DesktopEntry::text(std::string_view key) const {
    const auto found = values_.find(key);
    if (found == values_.end() || !isUtf8(found->second)) {
        return std::nullopt;
    }
    std::string result;
    const std::string& written = found->second;
    for (std::size_t i = 0; i < written.size(); ++i) {
        if (written[i] != '\\') {
            result += written[i];
            continue;
        }
        const auto meant = ++i < written.size() ? escaped(written[i]) : std::nullopt;
        if (!meant) {
            return std::nullopt;
        }
        result += *meant;
    }
    return result;
}

std::optional<bool> DesktopEntry::boolean(std::string_view key) const {
    const auto value = text(key);
    if (value == "true" || value == "1") {
        return true;
    }
    return value == "false" || value == "0" ? std::optional(false) : std::nullopt;
}

std::optional<std::string> execObstacle(std::string_view program) {
    const std::string start = "a program that is started at login cannot have ";
    const std::string end = " in its path: " + std::string(program);
    const auto isControl = [](unsigned char c) { return c < ' ' || c == 0x7F; };
    if (std::any_of(program.begin(), program.end(), isControl)) {
        return start + "a line break or another control character in its path";
    }
    if (program.find('=') != std::string_view::npos) {
        return start + "an equals sign" + end;
    }
    if (!isUtf8(program)) {
        return start + "characters that are not UTF-8 in its path";
    }
    return std::nullopt;
}

std::string execValue(std::string_view program) {
    // Three layers, of which launchers undo the outermost first: that of all values, that of field
    // codes, and that of quoting.
    // Some launchers look for the program before the second, and find none with a percent sign in
    // its name; to look for env is safe.
    std::string value = program.find('%') == std::string_view::npos ? "\"" : "env \"";
    for (const char c : program) {
        switch (c) {
        case '\\':
            value += "\\\\\\\\";
            break;
        case '"':
        case '`':
        case '$':
            value += "\\\\";
            value += c;
            break;
        case '%':
            value += "%%";
            break;
        default:
            value += c;
        }
    }
    return value + '"';
}

std::vector<std::string> execArguments(std::string_view exec) {
    const std::string plain = withoutFieldCodes(exec);
    Words words(plain);
    std::vector<std::string> arguments;
    while (auto word = words.next()) {
        arguments.push_back(std::move(*word));
    }
    if (words.isBroken()) {
        return {};
    }
    if (!arguments.empty() && arguments.front() == "env") {
        const auto isSetting = [](const std::string& word) {
            return word.find('=') != std::string::npos;
        };
        arguments.erase(arguments.begin(),
                        std::find_if_not(arguments.begin() + 1, arguments.end(), isSetting));
    }
    return arguments;
}

} // namespace quillon
