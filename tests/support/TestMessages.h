#pragma once

/// What Qt says while a test program runs, beside what Qt Test itself makes of it.
///
/// Qt Test reports messages only between the start and the end of a test object. What is said before or
/// after, by static objects or while the application shuts down, is printed here in the form of Qt Test, so
/// that it fails the test in ctest, and counted, so that it fails a test started by hand.
namespace TestMessages {

/// From now on messages outside the test object are counted. Called once, before the application is made.
void watch();

/// How many warnings and criticals have come outside the test object so far.
int strayCount();

/// Takes what the offscreen platform says about itself out of the messages that reach Qt Test. Qt Test puts
/// itself in front of every handler when it starts, hence this is called again and again, from the first
/// event on; it does nothing before Qt Test has started and nothing more than once.
void leaveOutPlatformNoise();

} // namespace TestMessages
