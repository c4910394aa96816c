#include <cstdio>

int main() {
    std::puts("zuksw: error: usage: zuksw -c CONFIG -o OUTPUT -e WARNINGS -i SIGNATURES");
    return 2;
}
