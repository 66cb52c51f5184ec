// The substrate: replaces a method and hands back what was there.
#pragma once

#include "objc/target.h"

extern "C" {
/// Makes `replacement` the method of the class; `*previous` becomes the implementation that was in force.
void MSHookMessageEx(Class cls, SEL name, IMP replacement, IMP* previous);
}
