// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

// Tables as loggers and spreadsheets write them: a header or none, values between separators, in some of
// whose columns there are positions and readings.

/// What a column holds.
enum class TableRole { kNothing, kX, kY, kLongitude, kLatitude, kEM1, kEM2, kSite, kRow };
inline constexpr int kTableRoles = static_cast<int>(TableRole::kRow) + 1;

/// A role as a user reads it: "X", "longitude", ..., "nothing".
std::string_view nameOf(TableRole role);

/// How the values of a table are told apart.
struct TableShape {
    char separator = ',';  ///< a blank stands for any number of blanks and tabs
    char decimalSign = '.';
    int linesToSkip = 0;   ///< above the first line of values; the last of them is the header
    bool minutes = false;  ///< positions in degrees are written as degrees and decimal minutes, ddmm.mmmm
    bool operator==(const TableShape&) const = default;
};

/// Cuts lines into their values, which hold until the next line. Blanks around a value are no part of it, and
/// a value in quotes is its content.
class FieldSplitter {
  public:
    explicit FieldSplitter(char separator) : separator_(separator) {}
    const std::vector<std::string_view>& split(std::string_view line);
    /// The values of the line that was cut last.
    const std::vector<std::string_view>& fields() const { return fields_; }

  private:
    void takeField(std::string_view& rest);

    char separator_;
    std::vector<std::string_view> fields_;
};

/// Reads the number of a value; false, `number` left alone, when it is none. A letter N, E, S or W before or
/// behind it, as positions have them, is read with `letters` only: S and W make the number negative.
bool readField(std::string_view field, char decimalSign, bool letters, double& number);

/// What the beginning of a text looks like: the separator and the decimal sign with which most values are
/// numbers, and the lines above the first line of numbers. Whether positions are in degrees and minutes is
/// said by guessRoles' columns (looksLikeMinutes).
TableShape recogniseTable(std::string_view text, bool cutOff);

/// So many columns of a table are shown, and can be given a role.
inline constexpr std::size_t kPreviewColumns = 200;

/// The first lines of a table, and its first columns.
struct TablePreview {
    std::vector<std::string> header;              ///< empty where no line is skipped
    std::vector<std::vector<std::string>> lines;  ///< 20 at most
    std::size_t columns = 0;                      ///< of the widest of them, the header too
};
TablePreview previewTable(std::string_view text, bool cutOff, const TableShape& shape);

/// What the columns are by the words of their header; nothing where they do not tell, or where a column is
/// empty on all of the first lines. No role but kNothing comes twice, and where there are X and Y there are
/// no longitude and latitude.
std::vector<TableRole> guessRoles(const TablePreview& preview);
/// The same where the first two columns are positions by themselves: if they hold any, no others are taken.
std::vector<TableRole> guessRolesBesidePosition(const TablePreview& preview);

/// Whether a longitude above 180 or a latitude above 90 stands in the columns of these roles: degrees and
/// minutes.
bool looksLikeMinutes(const TablePreview& preview, const TableShape& shape,
                      const std::vector<TableRole>& roles);

/// Makes a column this, and the one that was it nothing.
void giveRole(std::vector<TableRole>& roles, std::size_t column, TableRole role);

/// What is missing in these roles for an import, in a sentence; empty when nothing is.
std::string whatIsMissing(const std::vector<TableRole>& roles);

}  // namespace tessel
