#include "Platform/MacOS/MacUserDefaults.h"

#include "Platform/MacOS/NSStrings.h"

#import <Foundation/Foundation.h>

#include <type_traits>
#include <utility>

namespace quillon {

namespace {

/// True and false are numbers as well, of which there is one object each.
bool isBoolean(NSNumber* number) {
    return number == [NSNumber numberWithBool:YES] || number == [NSNumber numberWithBool:NO];
}

DefaultsObject unsupported(id object) { return UnsupportedObject{utf8Text([object description])}; }

DefaultsObject listOrUnsupported(NSArray* array) {
    StringList list;
    for (id element in array) {
        if (![element isKindOfClass:[NSString class]]) {
            return unsupported(array);
        }
        list.push_back(utf8Text(static_cast<NSString*>(element)));
    }
    return list;
}

DefaultsObject defaultsObject(id object) {
    if ([object isKindOfClass:[NSNumber class]]) {
        NSNumber* number = object;
        return isBoolean(number) ? DefaultsObject([number boolValue] != NO)
                                 : DefaultsObject([number doubleValue]);
    }
    if ([object isKindOfClass:[NSString class]]) {
        return utf8Text(static_cast<NSString*>(object));
    }
    if ([object isKindOfClass:[NSArray class]]) {
        return listOrUnsupported(object);
    }
    return unsupported(object);
}

NSArray* nativeList(const StringList& list) {
    NSMutableArray* array = [[NSMutableArray alloc] init];
    for (const std::string& text : list) {
        NSString* element = nativeString(text);
        if (element == nil) {
            return nil;
        }
        [array addObject:element];
    }
    return array;
}

/// Null for what cannot be stored.
id nativeObject(const DefaultsObject& object) {
    return std::visit(
        [](const auto& value) -> id {
            using T = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<T, bool>) {
                return [NSNumber numberWithBool:value];
            } else if constexpr (std::is_same_v<T, double>) {
                return isStorableNumber(value) ? [NSNumber numberWithDouble:value] : nil;
            } else if constexpr (std::is_same_v<T, std::string>) {
                return nativeString(value);
            } else if constexpr (std::is_same_v<T, StringList>) {
                return nativeList(value);
            } else {
                return nil;
            }
        },
        object);
}

} // namespace

class MacUserDefaultsStores::Store final : public UserDefaults {
  public:
    Store(NSUserDefaults* defaults, Diagnostics& diagnostics)
        : defaults_(defaults), diagnostics_(diagnostics) {}

    [[nodiscard]] std::optional<DefaultsObject> object(std::string_view key) const override {
        @autoreleasepool {
            NSString* name = nativeString(key);
            id stored = name == nil ? nil : [defaults_ objectForKey:name];
            return stored == nil ? std::nullopt : std::optional(defaultsObject(stored));
        }
    }

    void set(std::string_view key, DefaultsObject object) override {
        @autoreleasepool {
            NSString* name = nativeString(key);
            id native = nativeObject(object);
            if (name == nil || native == nil) {
                diagnostics_.line("⚠️ Setting " + std::string(key) + " cannot be stored");
                return;
            }
            [defaults_ setObject:native forKey:name];
        }
    }

    void remove(std::string_view key) override {
        @autoreleasepool {
            if (NSString* name = nativeString(key); name != nil) {
                [defaults_ removeObjectForKey:name];
            }
        }
    }

  private:
    NSUserDefaults* defaults_;
    Diagnostics& diagnostics_;
};

MacUserDefaultsStores::MacUserDefaultsStores(Diagnostics& diagnostics)
    : diagnostics_(diagnostics),
      standard_(std::make_unique<Store>([NSUserDefaults standardUserDefaults], diagnostics)) {}

MacUserDefaultsStores::~MacUserDefaultsStores() = default;

UserDefaults& MacUserDefaultsStores::standard() { return *standard_; }

UserDefaults* MacUserDefaultsStores::suite(std::string_view name) {
    if (const auto open = suites_.find(name); open != suites_.end()) {
        return open->second.get();
    }
    @autoreleasepool {
        NSString* suiteName = nativeString(name);
        NSUserDefaults* defaults =
            suiteName == nil ? nil : [[NSUserDefaults alloc] initWithSuiteName:suiteName];
        if (defaults == nil) {
            return nullptr;
        }
        auto store = std::make_unique<Store>(defaults, diagnostics_);
        return suites_.emplace(std::string(name), std::move(store)).first->second.get();
    }
}

} // namespace quillon
