#pragma once

#include <string>

// A variable that signatures may take as input.
struct Preset {
    std::string name;
    std::string value;
    std::string guid;  // of the signature it is for; empty: of all
};

// One attribute of one of the scanner's plug-ins.
struct PluginSetting {
    std::string plugin;
    std::string attribute;
    std::string value;
};

// From NAME=VALUE[@GUID]; the last @ counts. Throws Failure for another shape.
Preset parsePreset(const std::string& text);

// From PLUGIN.ATTRIBUTE=VALUE. Throws Failure for another shape.
PluginSetting parsePluginSetting(const std::string& text);

// The text as the library writes it into an XML attribute unseen. Throws Failure for one that XML cannot
// hold.
std::wstring asAttribute(const std::string& text);
