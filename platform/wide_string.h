#pragma once

#include <algorithm>
#include <cwchar>
#include <utility>

// A wide-character string that never changes its characters. Copies own their characters; a view borrows
// them from whoever made it and must not outlive them.
class String {
  public:
    String() noexcept : text(L""), owned_(nullptr) {}
    String(const wchar_t* characters) : text(L""), owned_(nullptr) {  // copies; null counts as empty
        if (characters != nullptr && *characters != L'\0') text = owned_ = duplicate(characters);
    }
    String(const String& other) : String(other.text) {}
    String(String&& other) noexcept
        : text(std::exchange(other.text, L"")), owned_(std::exchange(other.owned_, nullptr)) {}
    String& operator=(String other) noexcept {
        std::swap(text, other.text);
        std::swap(owned_, other.owned_);
        return *this;
    }
    ~String() { delete[] owned_; }

    // A string on characters that stay where they are for as long as it is used.
    static String view(const wchar_t* characters) noexcept {
        String borrowed;
        borrowed.text = characters;
        return borrowed;
    }

    // 0 when equal, else negative or positive as for wcscmp. A null pointer counts as the empty string.
    int compareTo(const wchar_t* other) const { return std::wcscmp(text, other == nullptr ? L"" : other); }
    // The same; there is one way to compare, so `mode` may be any number.
    int compareTo(const String& other, int /*mode*/) const { return std::wcscmp(text, other.text); }

    const wchar_t* text;  // zero-terminated, never null

  private:
    static wchar_t* duplicate(const wchar_t* characters) {
        const std::size_t size = std::wcslen(characters) + 1;
        return std::copy_n(characters, size, new wchar_t[size]) - size;
    }

    wchar_t* owned_;  // null for a view
};
