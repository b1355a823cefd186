#pragma once

#include <Foundation/NSArray.h>

@interface NSDictionary<__covariant KeyType, __covariant ObjectType>
    : NSObject <NSCopying, NSMutableCopying, NSSecureCoding, NSFastEnumeration>
@property(readonly) NSUInteger count;
- (ObjectType)objectForKey:(KeyType)aKey;
- (instancetype)init;
- (instancetype)initWithObjects:(const ObjectType[])objects
                        forKeys:(const KeyType<NSCopying>[])keys
                          count:(NSUInteger)cnt;
@end

@interface NSDictionary <KeyType, ObjectType>(NSExtendedDictionary)
@property(readonly, copy) NSArray<KeyType>* allKeys;
@property(readonly, copy) NSArray<ObjectType>* allValues;
- (ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

@interface NSDictionary <KeyType, ObjectType>(NSDictionaryCreation)
+ (instancetype)dictionary;
+ (instancetype)dictionaryWithObject:(ObjectType)object forKey:(KeyType<NSCopying>)key;
+ (instancetype)dictionaryWithObjects:(const ObjectType[])objects
                              forKeys:(const KeyType<NSCopying>[])keys
                                count:(NSUInteger)cnt;
+ (instancetype)dictionaryWithObjectsAndKeys:(id)firstObject, ... __attribute__((sentinel(0, 1)));
+ (instancetype)dictionaryWithObjects:(NSArray<ObjectType>*)objects
                              forKeys:(NSArray<KeyType<NSCopying>>*)keys;
@end

@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
- (void)removeObjectForKey:(KeyType)aKey;
- (void)setObject:(ObjectType)anObject forKey:(KeyType<NSCopying>)aKey;
- (instancetype)init;
- (instancetype)initWithCapacity:(NSUInteger)numItems;
@end

@interface NSMutableDictionary <KeyType, ObjectType>(NSMutableDictionaryCreation)
+ (instancetype)dictionaryWithCapacity:(NSUInteger)numItems;
@end
