#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QTextStream>

namespace porvane::admin {

struct Command;

// The options of every porvane-admin command line, given before the command's name.
struct CommonOptions {
    QCommandLineOption home;
    QCommandLineOption data;
    QCommandLineOption db;
    QCommandLineOption today;
    QCommandLineOption now;
    QCommandLineOption csv;
    QCommandLineOption help;

    CommonOptions();
    QList<QCommandLineOption> all() const { return {home, data, db, today, now, csv, help}; }
};

// "usage: porvane-admin [OPTIONS] COMMAND [ARGS]" with the options explained and the commands of the
// table, or for one command its own line.
void printUsage(QTextStream& out, const Command* command = nullptr);

} // namespace porvane::admin
