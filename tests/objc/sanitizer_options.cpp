// What the sanitizers have to know about a program that runs on the object runtime. Any test program may link it.
#if defined(__SANITIZE_ADDRESS__)
// Foundation's code keeps no frame pointers; without whole stacks nobody sees where a lost object came from, and the
// suppression below does not find what it is for.
extern "C" const char* __asan_default_options() { return "fast_unwind_on_malloc=0"; }

// The runtime keeps its tables, and classes what their +initialize makes, for the life of the process.
extern "C" const char* __lsan_default_suppressions() { return "leak:libobjc\n"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
#endif
