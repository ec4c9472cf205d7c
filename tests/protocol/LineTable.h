#pragma once

#include <string>

/// Whether lines.txt has a trace line.
/// @param tag  behind "KRO.VORNIPC."
/// @param text a message in it cut to its name
/// @return what is wrong with it; empty where nothing is
std::string faultOfTraceLine(const std::string& tag, int level, const std::string& method, const std::string& text);
