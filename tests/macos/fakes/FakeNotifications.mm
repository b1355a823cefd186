#include "Foundation.h"

#include <algorithm>

using quillon::fakes::stateOf;

namespace {

struct Notice {
    NSNotificationName name = nil;
    id object = nil;
};

// A nil name or object stands for any.
struct Observer {
    id who = nil;
    SEL selector = nullptr;
    void (^block)(NSNotification*) = nullptr;
    NSNotificationName name = nil;
    id object = nil;
};

struct Observers {
    std::vector<Observer> observers;
};

bool wants(const Observer& observer, NSNotification* notification) {
    return (!observer.name || [observer.name isEqualToString:[notification name]]) &&
           (!observer.object || observer.object == [notification object]);
}

} // namespace

@implementation NSNotification
+ (instancetype)notificationWithName:(NSNotificationName)name object:(id)object {
    const id notification = [[self alloc] init];
    stateOf<Notice>(notification) = {name, object};
    return notification;
}
- (NSNotificationName)name {
    return stateOf<Notice>(self).name;
}
- (id)object {
    return stateOf<Notice>(self).object;
}
- (NSDictionary*)userInfo {
    return nil;
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}
@end

@implementation NSNotificationCenter

+ (NSNotificationCenter*)defaultCenter {
    static NSNotificationCenter* const center = [[NSNotificationCenter alloc] init];
    return center;
}
- (void)addObserver:(id)observer
           selector:(SEL)selector
               name:(NSNotificationName)name
             object:(id)object {
    stateOf<Observers>(self).observers.push_back({observer, selector, nullptr, name, object});
}
// On the posting thread, whatever the queue.
- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)object
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification*))block {
    (void)queue;
    NSObject* token = [[NSObject alloc] init];
    stateOf<Observers>(self).observers.push_back({token, nullptr, [block copy], name, object});
    return token;
}
- (void)postNotification:(NSNotification*)notification {
    const auto observers = stateOf<Observers>(self).observers; // an observer may remove itself
    for (const auto& observer : observers) {
        if (!wants(observer, notification))
            continue;
        if (observer.block)
            observer.block(notification);
        else
            [observer.who performSelector:observer.selector withObject:notification];
    }
}
- (void)postNotificationName:(NSNotificationName)name object:(id)object {
    [self postNotification:[NSNotification notificationWithName:name object:object]];
}
- (void)removeObserver:(id)observer {
    [self removeObserver:observer name:nil object:nil];
}
- (void)removeObserver:(id)observer name:(NSNotificationName)name object:(id)object {
    std::erase_if(stateOf<Observers>(self).observers, [&](const Observer& candidate) {
        return candidate.who == observer && (!name || [name isEqual:candidate.name]) &&
               (!object || object == candidate.object);
    });
}

@end
