#include "core/plist/Plist.h"

#include <QtTest>

#include <cmath>

class PlistTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void roundTrip_data()
    {
        QTest::addColumn<QVariant>("value");
        const QDateTime when(QDate(2026, 11, 23), QTime(9, 4, 57), Qt::UTC);
        QTest::newRow("string") << QVariant(QStringLiteral("Grüße <&> \"quoted\""));
        QTest::newRow("empty string") << QVariant(QString(""));
        QTest::newRow("integer") << QVariant(qlonglong(-42));
        QTest::newRow("large unsigned") << QVariant(qulonglong(18446744073709551615ull));
        QTest::newRow("real") << QVariant(3.25);
        QTest::newRow("real with long fraction") << QVariant(0.1 + 0.2);
        QTest::newRow("true") << QVariant(true);
        QTest::newRow("false") << QVariant(false);
        QTest::newRow("date") << QVariant(when);
        QTest::newRow("data") << QVariant(QByteArray("\x00\x01\xff", 3) + QByteArray("binary and long enough to wrap the base64 lines of the writer"));
        QTest::newRow("empty dict") << QVariant(QVariantMap());
        QTest::newRow("empty array") << QVariant(QVariantList());
        QTest::newRow("nested") << QVariant(QVariantMap{
            {QStringLiteral("paths"), QVariantList{QStringLiteral("/home/a b/c"), QStringLiteral("/tmp")}},
            {QStringLiteral("inner"), QVariantMap{{QStringLiteral("n"), qlonglong(7)}, {QStringLiteral("ok"), true}}},
            {QStringLiteral("weeklyLastSaveDate"), when}});
    }
    void roundTrip()
    {
        QFETCH(QVariant, value);
        auto xml = Plist::serialize(value);
        QVERIFY2(xml.ok(), qPrintable(xml.ok() ? QString() : xml.error().message));
        auto back = Plist::parse(xml.value());
        QVERIFY2(back.ok(), qPrintable(back.ok() ? QString() : back.error().message));
        QCOMPARE(back.value(), value);
    }
    // Written as Foundation lays it out; read as Foundation writes it: DOCTYPE, tabs, a multi-line data block, a comment.
    void appleForm()
    {
        const QVariantMap dict{{QStringLiteral("weeklySecSaved"), qulonglong(15)},
                               {QStringLiteral("totalSecSaved"), qulonglong(3661)},
                               {QStringLiteral("list"), QVariantList{true, 1.5}}};
        const QByteArray expected =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
            "<plist version=\"1.0\">\n"
            "<dict>\n"
            "\t<key>list</key>\n"
            "\t<array>\n"
            "\t\t<true/>\n"
            "\t\t<real>1.5</real>\n"
            "\t</array>\n"
            "\t<key>totalSecSaved</key>\n"
            "\t<integer>3661</integer>\n"
            "\t<key>weeklySecSaved</key>\n"
            "\t<integer>15</integer>\n"
            "</dict>\n"
            "</plist>\n";
        QCOMPARE(Plist::serialize(dict).value(), expected);
        // As Foundation writes it: DOCTYPE, tabs, a multi-line data block, a comment.
        const QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                               "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                               "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                               "<plist version=\"1.0\">\n<dict>\n"
                               "\t<!-- a comment -->\n"
                               "\t<key>blob</key>\n\t<data>\n\tSGVsbG8g\n\td29ybGQ=\n\t</data>\n"
                               "\t<key>exclBndlIDAppsArray</key>\n\t<array>\n\t\t<string>com.example.App</string>\n\t</array>\n"
                               "\t<key>when</key>\n\t<date>2019-03-01T12:00:00Z</date>\n"
                               "\t<key>amp</key>\n\t<string>a &amp; b &lt;c&gt;</string>\n"
                               "\t<key>inf</key>\n\t<real>-infinity</real>\n"
                               "</dict>\n</plist>\n";
        auto parsed = Plist::parse(xml);
        QVERIFY(parsed.ok());
        const QVariantMap read = parsed.value().toMap();
        QCOMPARE(read.value(QStringLiteral("blob")).toByteArray(), QByteArray("Hello world"));
        QCOMPARE(read.value(QStringLiteral("exclBndlIDAppsArray")).toList().value(0).toString(),
                 QStringLiteral("com.example.App"));
        QCOMPARE(read.value(QStringLiteral("when")).toDateTime(), QDateTime(QDate(2019, 3, 1), QTime(12, 0), Qt::UTC));
        QCOMPARE(read.value(QStringLiteral("amp")).toString(), QStringLiteral("a & b <c>"));
        QVERIFY(std::isinf(read.value(QStringLiteral("inf")).toDouble()));
    }
    void badInputIsAnError_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("not xml") << QByteArray("\x89PNG\r\n\x1a\n binary");
        QTest::newRow("truncated") << QByteArray("<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>a</key><integer>1");
        QTest::newRow("key without value") << QByteArray("<plist><dict><key>a</key></dict></plist>");
        QTest::newRow("value without key") << QByteArray("<plist><dict><string>a</string></dict></plist>");
        QTest::newRow("unknown element") << QByteArray("<plist><thing/></plist>");
        QTest::newRow("bad integer") << QByteArray("<plist><integer>12x</integer></plist>");
        QTest::newRow("bad date") << QByteArray("<plist><date>yesterday</date></plist>");
        QTest::newRow("two top values") << QByteArray("<plist><true/><false/></plist>");
        QTest::newRow("element in a string") << QByteArray("<plist><string>a<b/></string></plist>");
        QTest::newRow("hostile depth") << QByteArray("<plist>") + QByteArray("<array>").repeated(5000) + "</plist>";
    }
    void badInputIsAnError()
    {
        QFETCH(QByteArray, xml);
        auto parsed = Plist::parse(xml);
        QVERIFY(!parsed.ok());
        QVERIFY(!parsed.error().message.isEmpty());
    }
    // What XML cannot carry is refused, and a refused write leaves the old file whole.
    void refusedValuesLeaveTheFile()
    {
        // A file name byte that is not UTF-8 travels as a lone surrogate; XML has no form for it.
        const QString withEscapedByte = QStringLiteral("/tmp/a") + QChar(char16_t(0xDCFF));
        QVERIFY(!Plist::serialize(withEscapedByte).ok());
        QVERIFY(!Plist::serialize(QString(QChar(char16_t(1)))).ok());
        QVERIFY(!Plist::serialize(QVariant()).ok());
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("list.plist"));
        QVERIFY(Plist::writeFileAtomically(path, QVariantList{QStringLiteral("first")}).ok());
        // A value that cannot be written leaves the old file whole.
        QVERIFY(!Plist::writeFileAtomically(path, QVariantList{QVariant()}).ok());
        QCOMPARE(Plist::readFile(path).value(), QVariant(QVariantList{QStringLiteral("first")}));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
        QVERIFY(!Plist::readFile(dir.filePath(QStringLiteral("missing.plist"))).ok());
    }
};

QTEST_GUILESS_MAIN(PlistTest)
#include "tst_plist.moc"
