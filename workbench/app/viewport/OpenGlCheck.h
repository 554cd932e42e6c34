#pragma once

#include <QString>

/// Whether scenes can be drawn where this program runs.
namespace OpenGlCheck {

/// Empty where they can; else a sentence that says what is missing. Looks once.
QString missing();

} // namespace OpenGlCheck
