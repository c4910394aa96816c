#pragma once

#include <string>

// What the C library knows of a country's customs; empty where the locale is not installed. The process's own
// locale is left alone.

std::string firstDayOfWeek(const std::string& locale);     // "Monday"
std::string measurementSystem(const std::string& locale);  // "Metric" or "US"
std::string paperSize(const std::string& locale);          // "A4", "Letter" or "WIDTHxHEIGHT" in millimetres
