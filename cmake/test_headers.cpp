// Carries the precompiled headers of the tests; see Tests.cmake.
int main() { return 0; }
