#pragma once

#include "admin/commands.h"
#include "lists/grid_lists.h"

namespace porvane::admin {

// list day YYYY-MM-DD | list month YYYY-MM: the day or month list of the desk, as text.
int runListCommand(CommandContext& context);
// search YYYY-MM[..YYYY-MM] KIND TEXT: the desk's record search in that month, or in the months from the
// first to the last.
int runSearchCommand(CommandContext& context);
// onsite: rebuilds today's status file as the desk does, then lists it.
int runOnsiteCommand(CommandContext& context);

// Prints the table the lists built (header and listed rows) and turns the outcome into the exit status. The
// desk's messages have gone to stderr through the prompter already; an error the desk shows in its title
// goes there too.
int finishList(CommandContext& context, const GridLists& lists, GridLists::Outcome outcome);

// "YYYY-MM" or "YYYY-MM-DD" into the desk's date boxes (day "--" when there is none). False when the text
// has another shape.
bool setDateBoxes(DateSelection& dates, const QString& text, bool withDay);

} // namespace porvane::admin
