// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTest>

#include <memory>

/// The base of every test class: a warning fails the test.
class TestCase : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    /// A test class with an `init` of its own calls this one first.
    void init();
};

namespace testcase {

using Make = std::unique_ptr<QObject> (*)();

/// Adds a test class to those that the program of its folder runs by name.
bool add(const QMetaObject& type, Make make);

} // namespace testcase

/// Stands at the end of a test class's source in place of a main function.
#define TESSEL_TEST(Class)                                                                         \
    static const bool isTestAdded =                                                                \
        testcase::add(Class::staticMetaObject,                                                     \
                      []() -> std::unique_ptr<QObject> { return std::make_unique<Class>(); });
