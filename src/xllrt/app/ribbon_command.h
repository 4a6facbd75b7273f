#pragma once

// The road from the add-in to the server of the shared ribbon.

#include <string>

namespace metrify {

/// Tells the server two texts, in the add-in's name, through the host's real-time data function. What comes
/// of it is not looked at.
void SendRibbonCommand(const std::string& first, const std::u16string& second = {});

} // namespace metrify
