// Carries the precompiled headers of the tests; see cmake/Tests.cmake.
int main() { return 0; }
