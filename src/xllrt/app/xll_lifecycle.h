#pragma once

// The lifecycle of an add-in: the module's load and unload, and the implementations of the entry points.

#include "xllrt/value/host_records.h"

#include <cstdint>

namespace metrify {

/// Why the loader calls the module; the numbers are the system's.
enum class ProcessReason : std::uint32_t { detach = 0, attach = 1, thread_attach = 2, thread_detach = 3 };

/// The module's entry point. Returns 0 to make the loader reject the module.
int ProcessEntry(void* module, ProcessReason reason);

/// True after a successful open; closing doesn't clear it.
bool IsAddInOpened();

/// For a process that loads several add-ins one after the other.
void SetAddInOpened(bool opened);

/// Opens the add-in. Returns 1; 0 on failure or if it is open already.
int OpenAddIn();

/// Closes the add-in. Its functions stay registered. Always returns 1.
int CloseAddIn();

/// Called when the user adds the add-in. Returns 1, or 0 if the application refuses.
int AddAddIn();

/// Called when the user removes the add-in. Unregisters its functions if it was opened. Always returns 1.
int RemoveAddIn();

/// Returns the add-in's name for action 1, otherwise error 15. The host frees the record's contents; the next
/// call reuses the record.
XLOPER12* DescribeAddIn12(XLOPER12* action);
XLOPER* DescribeAddIn4(XLOPER* action);

} // namespace metrify
