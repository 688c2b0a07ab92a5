#pragma once

#include "show/Show.h"

#include <optional>
#include <string>
#include <vector>

namespace check
{
/// What goes through the pipe between a check and the process that runs the show: a word that says
/// what it is, and what belongs to it.
using tMessage = std::vector<std::string>;

/// Writes a message whole, or ends the process: nobody listens any more.
void Send(int pipe, const tMessage &message);

/// Takes the first message out of `bytes`, which have come so far. Nothing when it is not whole.
std::optional<tMessage> TakeMessage(std::string &bytes);

/// A description as strings, and back. Nothing comes back of strings that are none.
tMessage ToMessage(const vyr::cShowDescription &description);
std::optional<vyr::cShowDescription> ToDescription(const tMessage &message);
} // namespace check
