#include <QtGlobal>

// A library that is no plug-in.

extern "C" Q_DECL_EXPORT void somethingElse() {}
