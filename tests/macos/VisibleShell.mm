#include "VisibleShell.h"

@implementation EventOfType
- (instancetype)initWithType:(NSEventType)type {
    self = [super init];
    type_ = type;
    return self;
}
- (NSEventType)type {
    return type_;
}
@end
