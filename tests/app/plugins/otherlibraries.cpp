#include <QtGlobal>

// A plug-in that was built against a host with one operation more.

extern "C" void operationOfAnotherHost();

extern "C" Q_DECL_EXPORT void initPlugin()
{
    operationOfAnotherHost();
}
