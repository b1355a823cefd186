#include "Foundation.h"

#include <algorithm>
#include <cstdarg>
#include <utility>

using quillon::fakes::arrayOf;
using quillon::fakes::elementsOf;
using quillon::fakes::stateOf;
using quillon::fakes::stringOf;
using quillon::fakes::utf8;

namespace {

struct Elements {
    std::vector<id> values;
    unsigned long changes = 0;
};

// In the order in which keys were first set.
struct Entries {
    std::vector<id> keys;
    std::vector<id> values;
    unsigned long changes = 0;
};

std::ptrdiff_t placeOf(const std::vector<id>& values, id wanted) {
    const auto found = std::find_if(values.begin(), values.end(),
                                    [&](id value) { return [value isEqual:wanted]; });
    return found == values.end() ? -1 : found - values.begin();
}

void set(Entries& entries, id key, id value) {
    ++entries.changes;
    if (const auto place = placeOf(entries.keys, key); place >= 0) {
        entries.values[std::size_t(place)] = value;
    } else {
        entries.keys.push_back([key copy]);
        entries.values.push_back(value);
    }
}

NSUInteger enumerated(NSFastEnumerationState* state, std::vector<id>& values,
                      unsigned long& changes) {
    if (state->state != 0)
        return 0;
    state->state = 1;
    state->itemsPtr = values.data();
    state->mutationsPtr = &changes;
    return values.size();
}

/// The objects up to the nil that ends them.
std::vector<id> listed(id first, std::va_list& rest) {
    std::vector<id> objects;
    for (id object = first; object; object = va_arg(rest, id))
        objects.push_back(object);
    return objects;
}

std::string lines(const std::vector<std::string>& texts, const char* open, const char* close) {
    std::string result = open;
    for (const auto& text : texts)
        result += "\n    " + text;
    return result + "\n" + close;
}

} // namespace

namespace quillon::fakes {

std::vector<id> elementsOf(NSArray* array) {
    return array ? stateOf<Elements>(array).values : std::vector<id>();
}

NSArray* arrayOf(const std::vector<id>& elements) {
    return [NSArray arrayWithObjects:elements.data() count:elements.size()];
}

} // namespace quillon::fakes

@implementation NSArray

- (instancetype)init {
    return self;
}
- (instancetype)initWithObjects:(const id[])objects count:(NSUInteger)count {
    stateOf<Elements>(self).values.assign(objects, objects + count);
    return self;
}
+ (instancetype)array {
    return [[self alloc] init];
}
+ (instancetype)arrayWithObject:(id)object {
    return [[self alloc] initWithObjects:&object count:1];
}
+ (instancetype)arrayWithObjects:(const id[])objects count:(NSUInteger)count {
    return [[self alloc] initWithObjects:objects count:count];
}
+ (instancetype)arrayWithObjects:(id)first, ... {
    std::va_list rest;
    va_start(rest, first);
    const auto objects = listed(first, rest);
    va_end(rest);
    return [self arrayWithObjects:objects.data() count:objects.size()];
}
+ (instancetype)arrayWithArray:(NSArray*)array {
    const auto elements = elementsOf(array);
    return [self arrayWithObjects:elements.data() count:elements.size()];
}

- (NSUInteger)count {
    return stateOf<Elements>(self).values.size();
}
- (id)objectAtIndex:(NSUInteger)index {
    return stateOf<Elements>(self).values.at(index);
}
- (id)objectAtIndexedSubscript:(NSUInteger)index {
    return [self objectAtIndex:index];
}
- (id)firstObject {
    return [self count] ? [self objectAtIndex:0] : nil;
}
- (id)lastObject {
    return [self count] ? [self objectAtIndex:[self count] - 1] : nil;
}
- (NSUInteger)indexOfObject:(id)object {
    const auto place = placeOf(stateOf<Elements>(self).values, object);
    return NSUInteger(place < 0 ? NSNotFound : place);
}
- (BOOL)containsObject:(id)object {
    return placeOf(stateOf<Elements>(self).values, object) >= 0;
}
- (NSArray*)arrayByAddingObject:(id)object {
    auto elements = elementsOf(self);
    elements.push_back(object);
    return arrayOf(elements);
}
- (NSString*)componentsJoinedByString:(NSString*)separator {
    std::string result;
    for (NSUInteger index = 0; index < [self count]; ++index)
        result += (index ? utf8(separator) : "") + utf8([[self objectAtIndex:index] description]);
    return stringOf(result);
}
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length {
    (void)buffer;
    (void)length;
    auto& elements = stateOf<Elements>(self);
    return enumerated(state, elements.values, elements.changes);
}

- (BOOL)isEqualToArray:(NSArray*)other {
    const auto mine = elementsOf(self);
    const auto others = elementsOf(other);
    return other && std::equal(mine.begin(), mine.end(), others.begin(), others.end(),
                               [](id one, id two) { return [one isEqual:two]; });
}
- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSArray class]] && [self isEqualToArray:object];
}
- (NSUInteger)hash {
    return [self count];
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return [self isKindOfClass:[NSMutableArray class]] ? [NSArray arrayWithArray:self] : self;
}
- (id)mutableCopyWithZone:(NSZone*)zone {
    (void)zone;
    return [NSMutableArray arrayWithArray:self];
}
- (NSString*)description {
    std::vector<std::string> texts;
    for (id element : elementsOf(self))
        texts.push_back(utf8([element description]));
    return stringOf(lines(texts, "(", ")"));
}

@end

@implementation NSMutableArray

- (instancetype)init {
    return self;
}
- (instancetype)initWithCapacity:(NSUInteger)capacity {
    (void)capacity;
    return self;
}
+ (instancetype)arrayWithCapacity:(NSUInteger)capacity {
    return [[self alloc] initWithCapacity:capacity];
}
- (void)addObject:(id)object {
    [self insertObject:object atIndex:[self count]];
}
- (void)insertObject:(id)object atIndex:(NSUInteger)index {
    auto& elements = stateOf<Elements>(self);
    ++elements.changes;
    elements.values.insert(elements.values.begin() + std::ptrdiff_t(index), object);
}
- (void)removeLastObject {
    [self removeObjectAtIndex:[self count] - 1];
}
- (void)removeObjectAtIndex:(NSUInteger)index {
    auto& elements = stateOf<Elements>(self);
    ++elements.changes;
    elements.values.erase(elements.values.begin() + std::ptrdiff_t(index));
}
- (void)replaceObjectAtIndex:(NSUInteger)index withObject:(id)object {
    stateOf<Elements>(self).values.at(index) = object;
}
- (void)removeAllObjects {
    auto& elements = stateOf<Elements>(self);
    ++elements.changes;
    elements.values.clear();
}
- (void)removeObject:(id)object {
    auto& elements = stateOf<Elements>(self);
    ++elements.changes;
    std::erase_if(elements.values, [&](id value) { return [value isEqual:object]; });
}

@end

@implementation NSDictionary

- (instancetype)init {
    return self;
}
- (instancetype)initWithObjects:(const id[])objects
                        forKeys:(const id<NSCopying>[])keys
                          count:(NSUInteger)count {
    for (NSUInteger index = 0; index < count; ++index)
        set(stateOf<Entries>(self), keys[index], objects[index]);
    return self;
}
+ (instancetype)dictionary {
    return [[self alloc] init];
}
+ (instancetype)dictionaryWithObject:(id)object forKey:(id<NSCopying>)key {
    return [[self alloc] initWithObjects:&object forKeys:&key count:1];
}
+ (instancetype)dictionaryWithObjects:(const id[])objects
                              forKeys:(const id<NSCopying>[])keys
                                count:(NSUInteger)count {
    return [[self alloc] initWithObjects:objects forKeys:keys count:count];
}
+ (instancetype)dictionaryWithObjectsAndKeys:(id)first, ... {
    std::va_list rest;
    va_start(rest, first);
    const auto listedObjects = listed(first, rest);
    va_end(rest);
    const id dictionary = [[self alloc] init];
    for (std::size_t index = 0; index + 1 < listedObjects.size(); index += 2)
        set(stateOf<Entries>(dictionary), listedObjects[index + 1], listedObjects[index]);
    return dictionary;
}
+ (instancetype)dictionaryWithObjects:(NSArray*)objects forKeys:(NSArray*)keys {
    const id dictionary = [[self alloc] init];
    for (NSUInteger index = 0; index < [keys count]; ++index)
        set(stateOf<Entries>(dictionary), [keys objectAtIndex:index],
            [objects objectAtIndex:index]);
    return dictionary;
}

- (NSUInteger)count {
    return stateOf<Entries>(self).keys.size();
}
- (id)objectForKey:(id)key {
    const auto& entries = stateOf<Entries>(self);
    const auto place = placeOf(entries.keys, key);
    return place < 0 ? nil : entries.values[std::size_t(place)];
}
- (id)objectForKeyedSubscript:(id)key {
    return [self objectForKey:key];
}
- (NSArray*)allKeys {
    return arrayOf(stateOf<Entries>(self).keys);
}
- (NSArray*)allValues {
    return arrayOf(stateOf<Entries>(self).values);
}
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length {
    (void)buffer;
    (void)length;
    auto& entries = stateOf<Entries>(self);
    return enumerated(state, entries.keys, entries.changes);
}

- (BOOL)isEqual:(id)object {
    if (![object isKindOfClass:[NSDictionary class]] || [object count] != [self count])
        return NO;
    for (id key in self)
        if (![[self objectForKey:key] isEqual:[(NSDictionary*)object objectForKey:key]])
            return NO;
    return YES;
}
- (NSUInteger)hash {
    return [self count];
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return [self isKindOfClass:[NSMutableDictionary class]]
               ? [NSDictionary dictionaryWithObjects:[self allValues] forKeys:[self allKeys]]
               : self;
}
- (id)mutableCopyWithZone:(NSZone*)zone {
    (void)zone;
    return [NSMutableDictionary dictionaryWithObjects:[self allValues] forKeys:[self allKeys]];
}
- (NSString*)description {
    std::vector<std::string> texts;
    for (id key in self)
        texts.push_back(utf8([key description]) + " = " +
                        utf8([[self objectForKey:key] description]) + ";");
    return stringOf(lines(texts, "{", "}"));
}

@end

@implementation NSMutableDictionary

- (instancetype)init {
    return self;
}
- (instancetype)initWithCapacity:(NSUInteger)capacity {
    (void)capacity;
    return self;
}
+ (instancetype)dictionaryWithCapacity:(NSUInteger)capacity {
    return [[self alloc] initWithCapacity:capacity];
}
- (void)setObject:(id)object forKey:(id<NSCopying>)key {
    set(stateOf<Entries>(self), key, object);
}
- (void)removeObjectForKey:(id)key {
    auto& entries = stateOf<Entries>(self);
    const auto place = placeOf(entries.keys, key);
    if (place < 0)
        return;
    ++entries.changes;
    entries.keys.erase(entries.keys.begin() + place);
    entries.values.erase(entries.values.begin() + place);
}

@end

@implementation NSSet

+ (instancetype)set {
    return [[self alloc] init];
}
+ (instancetype)setWithObject:(id)object {
    const id set = [[self alloc] init];
    stateOf<Elements>(set).values.push_back(object);
    return set;
}
- (NSUInteger)count {
    return stateOf<Elements>(self).values.size();
}
- (id)member:(id)object {
    const auto& values = stateOf<Elements>(self).values;
    const auto place = placeOf(values, object);
    return place < 0 ? nil : values[std::size_t(place)];
}
- (BOOL)containsObject:(id)object {
    return [self member:object] != nil;
}
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length {
    (void)buffer;
    (void)length;
    auto& elements = stateOf<Elements>(self);
    return enumerated(state, elements.values, elements.changes);
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

@end
