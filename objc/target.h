// The object runtime's C interface, under one set of names on every target.
#pragma once

// (The names of this folder stay clear of the system's own objc/ headers, which are found through the same path.)
#include <cstddef>
#include <cstdint>

#if defined(__APPLE__)
struct objc_object;
struct objc_class;
struct objc_selector;
struct objc_super {
    objc_object* self;
    objc_class* super_class;
};
using id = objc_object*;
using Class = objc_class*;
using SEL = const objc_selector*;
using IMP = id (*)(id, SEL, ...);
#if defined(__arm64__) || defined(__x86_64__)
using BOOL = bool;
#endif
extern "C" {
Class objc_getClass(const char* name);
Class objc_allocateClassPair(Class superclass, const char* name, std::size_t extraBytes);
void objc_registerClassPair(Class cls);
bool class_addMethod(Class cls, SEL name, IMP implementation, const char* types);
bool class_addIvar(Class cls, const char* name, std::size_t size, std::uint8_t alignment, const char* types);
Class class_getSuperclass(Class cls);
Class object_getClass(id object);
const char* class_getName(Class cls);
struct objc_ivar* class_getInstanceVariable(Class cls, const char* name);
std::ptrdiff_t ivar_getOffset(struct objc_ivar* ivar);
SEL sel_registerName(const char* name);
const char* sel_getName(SEL selector);
void objc_msgSend();
void objc_msgSendSuper();
#if defined(__x86_64__)
void objc_msgSend_stret();
void objc_msgSendSuper_stret();
#endif
}
#else
#include <objc/message.h>
#include <objc/objc.h>
#include <objc/runtime.h>
#undef nil
#undef YES
#undef NO
#endif
