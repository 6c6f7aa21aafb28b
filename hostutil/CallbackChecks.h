// Checks whether the host's callback records can be used, and warnings that show the host version
// needed.
//
// One rule holds for every record. It is available if it is not null, has exactly the required
// version, has at least the required count, and the required procedures are not null. A newer
// version is unavailable and sets `*newerVersion` to true, so the caller can decide to trust the
// newer host. Otherwise `*newerVersion` is not written; `newerVersion` may be null.
//
// The records remain the host's. [main-thread]
#pragma once

#include <PIGeneral.h>

/// True if `procs` has version 2, a count of at least 8, and its first 8 procedures.
bool HostBufferProcsAvailable(const BufferProcs* procs, bool* newerVersion = nullptr);

/// True if `procs` has version 3, a count of at least 4, and its first 4 procedures.
bool HostResourceProcsAvailable(const ResourceProcs* procs, bool* newerVersion = nullptr);

/// True if `procs` has version 1, a count of at least 8, and its first 4 procedures.
bool HostHandleProcsAvailable(const HandleProcs* procs, bool* newerVersion = nullptr);

/// True if `procs` has version 1, a count of at least 2, and its first 2 procedures.
bool HostPropertyAvailable(const PropertyProcs* procs, bool* newerVersion = nullptr);

/// True if `procs` has version 1, a count of at least 3, and its first 3 procedures.
bool HostChannelPortAvailable(const ChannelPortProcs* procs, bool* newerVersion = nullptr);

/// `displayProc` is a bare function pointer: available means non-null; `newerVersion` is never
/// written.
bool HostDisplayPixelsAvailable(DisplayPixelsProc displayProc, bool* newerVersion = nullptr);

/// True if `procs` and both of its sub-records have version 0, and the reading one a count of at
/// least 18; no procedure is checked. Only a newer version of `procs` itself sets `*newerVersion`.
bool HostDescriptorAvailable(const PIDescriptorParameters* procs, bool* newerVersion = nullptr);

/// Each warning returns true if its check passes. Otherwise it calls `ShowVersionAlert` with the
/// host version needed, as the text given here, and returns false.
bool WarnHostDisplayPixelsAvailable(DisplayPixelsProc displayProc);     ///< "2.501."
bool WarnHostAdvanceStateAvailable(AdvanceStateProc advanceProc);       ///< "3.0."
bool WarnHostColorServicesAvailable(ColorServicesProc colorProc);       ///< "2.5."
bool WarnHostBufferProcsAvailable(const BufferProcs* procs);            ///< "2.5."
bool WarnHostResourceProcsAvailable(const ResourceProcs* procs);        ///< "3.0."
bool WarnHostHandleProcsAvailable(const HandleProcs* procs);            ///< "3.0."
bool WarnHostPropertyAvailable(const PropertyProcs* procs);             ///< "2.5."
bool WarnHostChannelPortAvailable(const ChannelPortProcs* procs);       ///< "4.0."
bool WarnHostDescriptorAvailable(const PIDescriptorParameters* procs);  ///< "4.0."
