#pragma once

#include "support/fakeruntime.h"

#include <QTest>

/// A data row for each of the eight combinations of roles, in the columns server, client and local.
inline void addRoles()
{
    QTest::addColumn<bool>("server");
    QTest::addColumn<bool>("client");
    QTest::addColumn<bool>("local");
    for (int roles = 0; roles < 8; ++roles) {
        const bool server = roles & 1;
        const bool client = roles & 2;
        const bool local = roles & 4;
        QTest::addRow("server %d, client %d, local %d", server, client, local) << server << client << local;
    }
}

/// The roles of the current data row.
inline tavro::testsupport::FakeRuntime::Roles fetchRoles()
{
    QFETCH(bool, server);
    QFETCH(bool, client);
    QFETCH(bool, local);
    return {server, client, local};
}
