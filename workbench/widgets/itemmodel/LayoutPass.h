#pragma once

#include <QtGlobal>

/// Runs while a tree view lays out its rows. The view asks for the flags of every row then, and looks at
/// Qt::ItemNeverHasChildren alone; so models answer only that, and ask no row whether it can be edited: of a
/// million rows that takes longer than everything else.
class LayoutPass
{
    Q_DISABLE_COPY(LayoutPass)
public:
    LayoutPass() { ++s_running; }
    ~LayoutPass() { --s_running; }

    static bool isRunning() { return s_running > 0; }

private:
    inline static int s_running = 0;
};
