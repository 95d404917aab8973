#pragma once

#include <QString>
#include <QStringList>

namespace porvane {

// A save dialog's filter text: every "|" and every ":" separates pieces (a colon cannot appear inside a
// filter), taken as description and pattern pairs. Returns Qt name filters, "AVI files (*.avi)".
QStringList saveFilterToNameFilters(const QString& filter);

// The n-th (from 1) of the NUL-separated pieces of text; empty when there are fewer pieces.
QString piece(const QString& text, int n);

} // namespace porvane
