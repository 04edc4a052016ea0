// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/byte_stream.h"
#include "storage/saved_work.h"

namespace tessel {

// All of the work on a survey as bytes, bit for bit. docs/survey-file.md describes them.

/// Raised whenever a field is added or changed.
inline constexpr std::uint32_t kWorkFormat = 1;

void writeWork(ByteWriter& out, const Journal& journal, const SavedRecords& records);
/// The act that has been done last and has led to this survey, as one that waits to be done.
void writeWaitingAct(ByteWriter& out, const Act& act, const Survey& after);

/// Throws DamagedBytes, also where the parts do not fit together (work_check.h).
SavedWork readWork(ByteReader& in);

}  // namespace tessel
