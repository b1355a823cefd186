#pragma once

#include <Foundation/NSEnumerator.h>
#include <Foundation/NSObject.h>

@class NSString;

@interface NSArray<__covariant ObjectType>
    : NSObject <NSCopying, NSMutableCopying, NSSecureCoding, NSFastEnumeration>
@property(readonly) NSUInteger count;
- (ObjectType)objectAtIndex:(NSUInteger)index;
- (instancetype)init;
- (instancetype)initWithObjects:(const ObjectType[])objects count:(NSUInteger)cnt;
@end

@interface NSArray <ObjectType>(NSExtendedArray)
- (NSArray<ObjectType>*)arrayByAddingObject:(ObjectType)anObject;
- (BOOL)containsObject:(ObjectType)anObject;
- (NSUInteger)indexOfObject:(ObjectType)anObject;
- (BOOL)isEqualToArray:(NSArray<ObjectType>*)otherArray;
@property(readonly) ObjectType firstObject;
@property(readonly) ObjectType lastObject;
- (ObjectType)objectAtIndexedSubscript:(NSUInteger)idx;
- (NSString*)componentsJoinedByString:(NSString*)separator;
@end

@interface NSArray <ObjectType>(NSArrayCreation)
+ (instancetype)array;
+ (instancetype)arrayWithObject:(ObjectType)anObject;
+ (instancetype)arrayWithObjects:(const ObjectType[])objects count:(NSUInteger)cnt;
+ (instancetype)arrayWithObjects:(ObjectType)firstObj, ... __attribute__((sentinel(0, 1)));
+ (instancetype)arrayWithArray:(NSArray<ObjectType>*)array;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
- (void)addObject:(ObjectType)anObject;
- (void)insertObject:(ObjectType)anObject atIndex:(NSUInteger)index;
- (void)removeLastObject;
- (void)removeObjectAtIndex:(NSUInteger)index;
- (void)replaceObjectAtIndex:(NSUInteger)index withObject:(ObjectType)anObject;
- (instancetype)init;
- (instancetype)initWithCapacity:(NSUInteger)numItems;
@end

@interface NSMutableArray <ObjectType>(NSExtendedMutableArray)
- (void)removeAllObjects;
- (void)removeObject:(ObjectType)anObject;
@end

@interface NSMutableArray <ObjectType>(NSMutableArrayCreation)
+ (instancetype)arrayWithCapacity:(NSUInteger)numItems;
@end
