#pragma once

#include <QtTest>

/// The columns of a test's table, by type: tableColumns<QString, int>("word", "code").
template <class... Types, class... Names> void tableColumns(Names... names)
{
    (QTest::addColumn<Types>(names), ...);
}

/// One row of it, a value for each column.
template <class... Values> void tableRow(const char* name, const Values&... values)
{
    (QTest::newRow(name) << ... << values);
}
