#include "openai/addressclass.h"

#include <QTest>

using namespace tavro::assistantservice;

Q_DECLARE_METATYPE(AddressClass)

/// Where network addresses lie.
class AddressClassTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void addressHasItsClass_data();
    void addressHasItsClass();
};

void AddressClassTest::addressHasItsClass_data()
{
    QTest::addColumn<AddressClass>("kind");
    for (const char *address :
         {"1.1.1.1", "9.255.255.255", "11.0.0.0", "100.63.255.255", "100.128.0.0", "128.0.0.1", "172.15.255.255",
          "172.32.0.0", "192.167.255.255", "192.169.0.0", "198.17.255.255", "198.20.0.0", "223.255.255.255",
          "::ffff:1.1.1.1", "64:ff9b::1.1.1.1", "2002:101:101::", "2606:4700::1111", "2a00::1"}) {
        QTest::newRow(address) << AddressClass::Public;
    }
    for (const char *address : {"127.0.0.1", "127.255.255.255", "::1", "::ffff:127.0.0.1"}) {
        QTest::newRow(address) << AddressClass::Loopback;
    }
    for (const char *address :
         {"10.0.0.1", "172.16.0.1", "172.31.255.255", "192.168.1.1", "fc00::1", "fdff::1", "::ffff:192.168.1.1"}) {
        QTest::newRow(address) << AddressClass::Private;
    }
    for (const char *address : {"100.64.0.1", "100.127.255.255", "::ffff:100.64.0.1"}) {
        QTest::newRow(address) << AddressClass::Shared;
    }
    for (const char *address : {"0.0.0.0",
                                "0.1.2.3",
                                "169.254.169.254",
                                "192.0.0.8",
                                "192.0.2.1",
                                "192.88.99.1",
                                "198.18.0.1",
                                "198.51.100.1",
                                "203.0.113.1",
                                "224.0.0.1",
                                "239.255.255.255",
                                "240.0.0.1",
                                "255.255.255.255",
                                "::",
                                "::10.0.0.1",
                                "::ffff:0.0.0.0",
                                "::ffff:169.254.169.254",
                                "64:ff9b::10.0.0.1",
                                "64:ff9b::127.0.0.1",
                                "64:ff9b:1::1.1.1.1",
                                "2002:a00:1::",
                                "2002:7f00:1::",
                                "2001::1",
                                "2001:db8::1",
                                "3fff::1",
                                "100::1",
                                "fe80::1",
                                "fe80::1%lo",
                                "fec0::1",
                                "ff02::1",
                                "localhost",
                                ""}) {
        QTest::newRow(address) << AddressClass::Forbidden;
    }
}

void AddressClassTest::addressHasItsClass()
{
    QTEST(classOf(QTest::currentDataTag()), "kind");
}

QTEST_GUILESS_MAIN(AddressClassTest)
#include "tst_addressclass.moc"
