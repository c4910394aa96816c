#include "bench/support/arguments.h"

#include <charconv>
#include <cstring>

int numberArgument(int argc, char** argv, int index, int usual) {
    if (index >= argc) return usual;
    const char* end = argv[index] + std::strlen(argv[index]);
    int number = 0;
    const auto [rest, error] = std::from_chars(argv[index], end, number);
    return error == std::errc() && rest == end ? number : 0;
}
