#pragma once

// Commands from the add-in to the server of the shared ribbon.

#include <string>

namespace metrify {

/// Sends two texts with the add-in's name to the server, by the host's real-time data function. The result is
/// ignored.
void SendRibbonCommand(const std::string& first, const std::u16string& second = {});

} // namespace metrify
