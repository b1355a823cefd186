#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quillon::fakes {

/// Assistive access to the other programs.
class FakeAccessibility {
  public:
    /// A call on an element. An application is called "application 42", a window "window Name of
    /// 42", what is set true or false by these words.
    struct Call {
        std::string function;
        std::string element;
        std::string name;  // of the attribute or action
        std::string value; // what was set
        bool operator==(const Call&) const = default;
    };

    bool isTrusted = true;

    /// For each query whether the user was to be asked; nothing when the query did not say.
    std::vector<std::optional<bool>> trustQueries;

    std::vector<Call> calls;

    /// The windows of each program, front to back. A program that is not here does not answer.
    std::map<pid_t, std::vector<std::string>> windows;

    /// What a function answers instead of success, by its name.
    std::map<std::string, AXError> errors;

    bool makesElements = true;

    /// Whether a program's windows are a text, or a list of texts, instead of a list of elements.
    enum class Answers { elements, text, texts, nothing };
    Answers answers = Answers::elements;

    void reset() { *this = {}; }
};

FakeAccessibility& fakeAccessibility();

} // namespace quillon::fakes
