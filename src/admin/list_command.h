#pragma once

#include "admin/commands.h"
#include "lists/grid_lists.h"
#include "lists/list_text.h"

#include <QFile>

namespace porvane::admin {

// list day YYYY-MM-DD | list month YYYY-MM: the day or month list of the desk, as text.
int runListCommand(CommandContext& context);
// search YYYY-MM[..YYYY-MM] KIND TEXT: the desk's record search in that month, or in the months from the
// first to the last.
int runSearchCommand(CommandContext& context);
// onsite: rebuilds today's status file as the desk does, then lists it.
int runOnsiteCommand(CommandContext& context);

// A list printed to stdout (header and listed rows): the rows of the day, month and on-site lists as their
// file is read, so that it is read once, a search's once it is done.
class ListOutput {
public:
    ListOutput(CommandContext& context, GridLists& lists);
    ~ListOutput();
    ListOutput(const ListOutput&) = delete;
    ListOutput& operator=(const ListOutput&) = delete;

    // Prints what is still to print and turns the outcome into the exit status. The desk's messages have gone
    // to stderr through the prompter already; an error the desk shows in its title goes there too.
    int finish(GridLists::Outcome outcome);

private:
    CommandContext& m_context;
    GridLists& m_lists;
    QFile m_stdout;
    ListTextWriter m_writer;
    qsizetype m_printed = 0; // rows printed as they were read
};

// "YYYY-MM" or "YYYY-MM-DD" into the desk's date boxes (day "--" when there is none). False when the text
// has another shape.
bool setDateBoxes(DateSelection& dates, const QString& text, bool withDay);

} // namespace porvane::admin
