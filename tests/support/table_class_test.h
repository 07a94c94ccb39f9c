#pragma once
// The fixture of one table class's tests: the installation, and the numbers of the
// rows the class read.

#include "support/entity_db.h"

#include <vector>

namespace sealtest {

// Table's rows are Row, reached through its accessor At.
template <class Table, class Row, Row& (Table::*At)(qint32)>
class TableClassTest : public InstallationTest {
protected:
    // The nIDNo of every row list holds, in its order.
    static std::vector<qint32> ids(Table& list) { return sealtest::ids(list, At); }

    // The nIDNo of the rows the grid reads with filter, on a table opened for the call.
    std::vector<qint32> grid(const Row& filter)
    {
        Table& list = opened<Table>();
        EXPECT_EQ(list.iDataReadGrid(filter), 0) << list.sErrMsg().toStdString();
        return ids(list);
    }
};

}  // namespace sealtest
