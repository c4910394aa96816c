#pragma once

#include <string>

namespace zuksw {

/** Takes from this process what a scan never needs: to gain privileges, to change or make files, to start
 *  programs, to open sockets. Descriptors that are open stay usable. Call before the first thread. Returns
 * what the kernel could not do, empty when all is in place. */
std::string enterSandbox();

/** Makes the process yield to others: `nice` is added to its nice value, and its reading waits for others'.
 */
void lowerPriority(int nice);

}  // namespace zuksw
