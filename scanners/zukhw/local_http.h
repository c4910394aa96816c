#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

// Sends `body` to the server that listens at the socket file `path`, and returns the body of its answer; no
// value when there is none within the time, or it says anything but that all is well. Nothing goes over a
// network.
std::optional<std::string> postLocally(const std::string& path, std::string_view contentType,
                                       std::string_view body, std::chrono::milliseconds limit);

// The body of an answer as it came over the connection, parts put together; no value when it is cut or tells
// of a failure.
std::optional<std::string> bodyOfHttpAnswer(std::string_view answer);
