// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tessel {

/// The address that a field's instruction links to: HYPERLINK "address", or with the switch \l a place within
/// the document or the target, which follows the sign #. Empty when the field is no link.
std::string linkAddress(std::string_view instruction);

}  // namespace tessel
