#pragma once

// The life of an add-in in its host: the module's load and end, and what the host's add-in entries do.

#include "xllrt/value/host_records.h"

#include <cstdint>

namespace metrify {

/// What the loader tells the module, in the system's own numbers.
enum class ProcessReason : std::uint32_t { detach = 0, attach = 1, thread_attach = 2, thread_detach = 3 };

/// The module's entry. Gives 0 if the loader is to refuse the module.
int ProcessEntry(void* module, ProcessReason reason);

/// True from a successful open on; closing doesn't change it.
bool IsAddInOpened();

/// For a process that has one add-in after the other.
void SetAddInOpened(bool opened);

/// Opens the add-in: 1, or 0 if it was opened before or cannot be.
int OpenAddIn();

/// Closes it: always 1. Its functions stay registered.
int CloseAddIn();

/// The user has added it to the host's add-ins: 1, or 0 if the application objects.
int AddAddIn();

/// The user has taken it from the host's add-ins: always 1. An add-in that was opened takes its functions
/// back.
int RemoveAddIn();

/// The add-in's name if the action reads as 1, error 15 otherwise. The record is the host's to free, and this
/// routine's again with the next call.
XLOPER12* DescribeAddIn12(XLOPER12* action);
XLOPER* DescribeAddIn4(XLOPER* action);

} // namespace metrify
