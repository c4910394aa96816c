#pragma once

#include <cwchar>
#include <memory>
#include <utility>

// A wide-character string that never changes its characters. Copies own their characters; a view borrows
// them from whoever made it and must not outlive them.
class String {
  public:
    String() noexcept : text(L"") {}
    String(const wchar_t* characters) : text(L"") {  // copies; null counts as empty
        if (characters == nullptr || *characters == L'\0') return;
        const std::size_t size = std::wcslen(characters) + 1;
        owned_.reset(new wchar_t[size]);
        text = std::wmemcpy(owned_.get(), characters, size);
    }
    String(const String& other) : String(other.text) {}
    String(String&& other) noexcept : text(std::exchange(other.text, L"")), owned_(std::move(other.owned_)) {}
    String& operator=(String other) noexcept {
        std::swap(text, other.text);
        std::swap(owned_, other.owned_);
        return *this;
    }
    ~String() = default;

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
    std::unique_ptr<wchar_t[]> owned_;  // none for a view
};
