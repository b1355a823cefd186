#pragma once

#include <cstddef>
#include <objc/objc.h>

OBJC_EXPORT Class objc_getClass(const char* name);
OBJC_EXPORT Class object_getClass(id obj);
OBJC_EXPORT const char* object_getClassName(id obj);
OBJC_EXPORT const char* class_getName(Class cls);
OBJC_EXPORT BOOL class_respondsToSelector(Class cls, SEL sel);
OBJC_EXPORT BOOL sel_isEqual(SEL lhs, SEL rhs);
OBJC_EXPORT BOOL class_addMethod(Class cls, SEL name, IMP imp, const char* types);
