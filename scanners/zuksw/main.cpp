// zuksw: judges the software of a machine by signatures. Everything it has to say goes to standard output,
// one line at a time, since that is what its caller keeps.

#include "scanners/zuksw/setup/program.h"

int main(int count, char** words) {
    return zuksw::runProgram({words + 1, words + count});
}
