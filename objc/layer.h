// The whole of the object layer: messages, ownership, classes made of C++ types, blocks.
#pragma once

#include "objc/block.h"
#include "objc/class.h"
#include "objc/object.h"
#include "objc/send.h"
#include "objc/strong.h"
