#pragma once

#include "Comparison.h"

#include <QString>
#include <QStringList>

/// What the command line of the benchmark program asks for.
struct BenchmarkOptions
{
    QStringList names;   ///< benchmarks whose names begin with one of them; none: all
    QString jsonFile;    ///< where results are written as JSON; empty: nowhere
    int repetitions = 5; ///< --repeat N
    bool list = false;   ///< --list: names and sizes only
    bool smoke = false;  ///< --smoke: every benchmark once at a small size, to see that it runs
    bool check = false;  ///< --check: a missed aim is an error
    bool help = false;   ///< --help
    QString fault;       ///< what is wrong with the command line, one sentence; empty where nothing is

    /// Reads the arguments behind the program's name.
    static BenchmarkOptions parse(const QStringList &arguments);

    /// The benchmarks asked for, in the given order. A name that fits none is a fault.
    QVector<BenchmarkCase> choose(const QVector<BenchmarkCase> &all);

    static QString usage();
};
