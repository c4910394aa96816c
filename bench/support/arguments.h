#pragma once

// The argument at `index` as a number: `usual` when it is not there, 0 when it is no number.
int numberArgument(int argc, char** argv, int index, int usual);
