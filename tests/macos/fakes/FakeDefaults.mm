#include "FakeDefaults.h"

#include "Foundation.h"

#include <map>

using quillon::fakes::fakeDefaults;
using quillon::fakes::stateOf;
using quillon::fakes::utf8;

namespace {

struct StoreName {
    std::string name;
};

std::map<std::pair<std::string, std::string>, id>& stored() {
    static std::map<std::pair<std::string, std::string>, id> objects;
    return objects;
}

} // namespace

@implementation NSUserDefaults
+ (NSUserDefaults*)standardUserDefaults {
    static NSUserDefaults* const defaults = [[NSUserDefaults alloc] init];
    return defaults;
}
- (instancetype)initWithSuiteName:(NSString*)name {
    ++fakeDefaults().suitesMade;
    if (fakeDefaults().refusedSuites.contains(utf8(name)))
        return nil;
    stateOf<StoreName>(self).name = utf8(name);
    return self;
}
- (id)objectForKey:(NSString*)key {
    return (id)fakeDefaults().object(stateOf<StoreName>(self).name, utf8(key));
}
- (void)setObject:(id)object forKey:(NSString*)key {
    fakeDefaults().setObject(stateOf<StoreName>(self).name, utf8(key), (void*)object);
}
- (void)removeObjectForKey:(NSString*)key {
    stored().erase({stateOf<StoreName>(self).name, utf8(key)});
}
@end

namespace quillon::fakes {

void* FakeDefaults::object(const std::string& store, const std::string& key) const {
    const auto found = stored().find({store, key});
    return found == stored().end() ? nullptr : (void*)found->second;
}

void FakeDefaults::setObject(const std::string& store, const std::string& key, void* object) {
    stored()[{store, key}] = (id)object;
}

void FakeDefaults::reset() {
    stored().clear();
    *this = {};
}

FakeDefaults& fakeDefaults() {
    static FakeDefaults defaults;
    return defaults;
}

} // namespace quillon::fakes
