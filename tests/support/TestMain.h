#pragma once

#include "ModalAnswer.h"
#include "TestMessages.h"
#include "TestSandbox.h"
#include "UnexpectedModals.h"

#include <QApplication>
#include <QtTest>

/// What stands around the test functions of every test program; used through the two macros below.
namespace TestMain {

/// The fading clear button of a line edit deletes its animation from the event loop, a moment after the line edit is
/// gone: without that moment the leak sanitizer reports it.
inline void letAnimationsEnd()
{
#ifdef __SANITIZE_ADDRESS__
    QTest::qWait(250); // a fade takes 160 ms
#endif
}

/// Runs TestClass under an Application (QCoreApplication or QApplication) inside a TestSandbox.
/// Returns the exit status of Qt Test, or 1 where all tests passed but a message came outside of them.
template <typename Application, typename TestClass>
int run(int argc, char **argv)
{
    int status = 0;
    TestMessages::watch();
    {
        TestSandbox sandbox;
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QCoreApplication::setOrganizationName(QStringLiteral("MetadataEditorTests"));
        Application application(argc, argv);
        QCoreApplication::setApplicationName(QStringLiteral("MetadataEditorTest"));
        UnexpectedModals unexpectedModals;
        TestClass test;
        QTEST_SET_MAIN_SOURCE_PATH
        status = QTest::qExec(&test, argc, argv);
        letAnimationsEnd();
    }
    return status == 0 && TestMessages::strayCount() > 0 ? 1 : status;
}

} // namespace TestMain

/// The main function of a test with widgets, fonts or icons. Stands at the end of the file, before the
/// include of its .moc.
#define NK_TEST_MAIN(TestClass)                                    \
    int main(int argc, char **argv)                                \
    {                                                              \
        return TestMain::run<QApplication, TestClass>(argc, argv); \
    }

/// The main function of a test that needs an event loop and no window system.
#define NK_GUILESS_TEST_MAIN(TestClass)                                \
    int main(int argc, char **argv)                                    \
    {                                                                  \
        return TestMain::run<QCoreApplication, TestClass>(argc, argv); \
    }
