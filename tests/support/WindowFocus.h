#pragma once

#include <QGuiApplication>
#include <QWindow>
#include <QtTest>

/// The focus as the window system gives it.
class WindowFocus
{
public:
    WindowFocus() = delete;

    /// Waits until the window system has given its focus to the window of a widget; false where it does not.
    ///
    /// A person's keys and clicks reach a menu or a list after that, a test's own events would run ahead of it: a
    /// pop-up that such an event closes gets its focus afterwards, and takes it away from the editor that the event
    /// has opened. QTest::qWaitForWindowActive() does not see this: to it a pop-up is active with its parent.
    static bool waitFor(const QWidget *widget)
    {
        const QPointer<QWindow> window = widget ? widget->window()->windowHandle() : nullptr;
        return QTest::qWaitFor([&] { return window && QGuiApplication::focusWindow() == window; });
    }
};
