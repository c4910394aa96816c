#pragma once

constexpr char kScannerVersion[] = "1.0.0.0";
constexpr int kFieldTableVersion = 1;  // raised when docs/fields.md changes what a field means
