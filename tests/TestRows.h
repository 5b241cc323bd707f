#pragma once

// A data table of one column, each row a name and its value: the common case of a test run with a
// few values of one thing, e.g. rowsOf<bool>("cancel", {{"cancelled", true}, {"a file vanishes", false}}).

#include <QTest>

#include <initializer_list>
#include <utility>

template <typename T>
void rowsOf(const char *column, std::initializer_list<std::pair<const char *, T>> rows)
{
    QTest::addColumn<T>(column);
    for (const auto &[name, value] : rows)
        QTest::newRow(name) << value;
}
