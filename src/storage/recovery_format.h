// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/field_stream.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tessel::recovery_format {

// What writing and reading a recovery file agree upon. A file is its signature and records; a record is
// frames, the last of which says so; a frame is the size of its piece (4 bytes), the record's kind, whether
// it is the last one, a checksum (8 bytes) and the piece.

inline constexpr std::string_view kSignature = "VARN-Tessel recovery 1\n";
inline constexpr const char* kNameBegins = "recovery-";
/// Of one that is not whole yet, or set aside because all in it has been saved.
inline constexpr const char* kAsideNameBegins = "aside-";
inline constexpr std::size_t kFrameHead = 14;

/// What a record holds.
enum Kind : std::uint8_t {
    kWork = 1,  ///< all of it, in the place of what was before
    kAct,       ///< an act that waits to be done
    kMove,      ///< how many acts are in force
    kCounts,    ///< what was counted, and which distances there are
    kNotes,     ///< parameters, and what is noted of the act done last
    kRecords    ///< all that the journal does not know
};

/// What belongs to the place where a journal stands.
struct Notes {
    SurveyParameters parameters;
    std::optional<SurveyParameters> own;  ///< the survey's, while others have been set
    std::uint32_t menus = 0;
    bool canRest = true;
    std::uint64_t exported = 0;
};

/// The checksum of a frame.
std::uint64_t frameChecksum(std::uint8_t kind, std::string_view piece, bool isLast);
/// What stands in front of a piece.
std::string frameHead(std::uint8_t kind, std::string_view piece, bool isLast);

void writeCounts(ByteWriter& out, const Journal& journal);
void writeNotes(ByteWriter& out, const Journal& journal);

/// Does to the work what a record says. Throws DamagedBytes where it cannot be; then nothing behind it
/// counts.
void readRecord(std::uint8_t kind, ByteReader& in, SavedWork& work);

}  // namespace tessel::recovery_format
