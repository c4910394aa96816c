#pragma once

class Stream;
class ZUKlog;

// Reads a scanner's standard output to its end and logs each line that ends in a line feed, at the level
// of traceMAX and without its carriage returns. What follows the last line feed is not logged.
// `log` may be null: then the output is only read. `location` is the message's location.
void logStandardOutput(Stream& output, ZUKlog* log, const char* location);
