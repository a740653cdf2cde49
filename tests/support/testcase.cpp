// SPDX-License-Identifier: MIT
#include "testcase.h"

#include <QRegularExpression>

#ifdef QT_WIDGETS_LIB
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

#include <cstdio>
#include <vector>

namespace {

struct TestClass
{
    QByteArray name;
    testcase::Make make;
};

std::vector<TestClass>& testClasses()
{
    static std::vector<TestClass> classes;
    return classes;
}

} // namespace

void TestCase::init()
{
    // The platform without a display warns of each dialog, each window that is brought forward and
    // each menu.
    QTest::failOnWarning(QRegularExpression(
        QStringLiteral("^(?!This plugin does not support "
                       "(propagateSizeHints\\(\\)|raise\\(\\)|grabbing the keyboard)$)")));
}

bool testcase::add(const QMetaObject& type, Make make)
{
    testClasses().push_back({type.className(), make});
    return true;
}

/// Runs the test class named by the first argument, "rowlayout" for TestRowLayout. The other
/// arguments are those of Qt Test.
int main(int argc, char* argv[])
{
    const QByteArray wanted = QByteArray("Test") + (argc > 1 ? argv[1] : "");
    for (const TestClass& known : testClasses()) {
        if (known.name.compare(wanted, Qt::CaseInsensitive) != 0)
            continue;
        argv[1] = argv[0];
        int rest = argc - 1;
        const Application application(rest, argv + 1);
        return QTest::qExec(known.make().get(), rest, argv + 1);
    }
    std::fprintf(stderr, "usage: %s CLASS [Qt Test's arguments], CLASS one of:\n", argv[0]);
    for (const TestClass& known : testClasses())
        std::fprintf(stderr, "  %s\n", known.name.mid(4).toLower().constData());
    return 2;
}
