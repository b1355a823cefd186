#include "Hub/FlatObjects.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace quillon {

namespace {

using Json = nlohmann::json;

/// Follows the document; each function answers whether to read on.
class ObjectReader {
  public:
    using Accept = std::function<bool(const FlatObject&)>;

    explicit ObjectReader(const Accept& accept) : accept_(accept) {}

    bool null() { return value(nullptr); }
    bool boolean(bool flag) { return value(flag); }
    bool number_integer(Json::number_integer_t /*number*/) { return value(OtherJson{}); }
    bool number_unsigned(Json::number_unsigned_t /*number*/) { return value(OtherJson{}); }
    bool number_float(Json::number_float_t /*number*/, const Json::string_t& /*text*/) {
        return value(OtherJson{});
    }
    bool string(Json::string_t& text) { return value(std::move(text)); }
    bool binary(Json::binary_t& /*bytes*/) { return false; }

    bool start_array(std::size_t /*elements*/) {
        return depth_ == 0 ? enter() : value(OtherJson{}) && enter();
    }
    bool end_array() { return leave(); }
    bool start_object(std::size_t /*elements*/) {
        if (depth_ == inArray) {
            object_ = {};
            return enter();
        }
        return value(OtherJson{}) && enter();
    }
    bool end_object() { return leave() && (depth_ != inArray || accept_(object_)); }
    bool key(Json::string_t& name) {
        if (depth_ == inObject) {
            name_ = std::move(name);
        }
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) {
        return false;
    }

  private:
    static constexpr int inArray = 1;
    static constexpr int inObject = 2;
    static constexpr int deepest = 100; // nobody means more

    bool enter() { return ++depth_ <= deepest; }
    bool leave() {
        --depth_;
        return true;
    }

    bool value(FlatValue value) {
        if (depth_ == inObject) {
            object_.add(std::move(name_), std::move(value));
        }
        return depth_ >= inObject;
    }

    const Accept& accept_;
    int depth_ = 0;
    FlatObject object_;
    std::string name_;
};

} // namespace

const FlatValue* FlatObject::find(std::string_view name) const {
    const auto found = std::find_if(fields_.rbegin(), fields_.rend(),
                                    [&](const auto& field) { return field.first == name; });
    return found == fields_.rend() ? nullptr : &found->second;
}

bool readFlatObjects(std::string_view document,
                     const std::function<bool(const FlatObject&)>& accept) {
    ObjectReader reader(accept);
    return Json::sax_parse(document, &reader);
}

} // namespace quillon
