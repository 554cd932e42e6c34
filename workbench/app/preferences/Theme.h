#pragma once

/// How the whole application looks. The numbers are stored in the preferences.
enum class Theme : int { System = 0, Light = 1, Dark = 2 };

/// Puts a theme into effect at once, for every window. System gives back the style and the colours that the
/// application started with. GUI thread; needs a QApplication.
void applyTheme(Theme theme);
