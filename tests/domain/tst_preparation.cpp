#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The domain's directory, which the practice Mac prepares once and keeps in the user's cache.
class TestPreparation : public QObject
{
    Q_OBJECT

private slots:
    void happensOnceAndReplacesFormerOnes()
    {
        const QTemporaryDir caches;
        QDir cache(caches.filePath("morvanta-join-assistant"));
        const QString former = "domain-0123456789abcdef";
        QVERIFY(cache.mkpath(former));
        QCOMPARE(startMac(caches.path()),
                 QByteArray("Preparing the directory of example.test (once, about 10 s)...\n"));
        QCOMPARE(cache.entryList({"domain-*"}, QDir::Dirs).size(), 1);
        QVERIFY(!cache.exists(former));
        QCOMPARE(startMac(caches.path()), QByteArray());
    }

private:
    // What it says until a command has run on it.
    static QByteArray startMac(const QString& caches)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CACHE_HOME", caches);
        QProcess mac;
        mac.setProcessEnvironment(environment);
        mac.setProcessChannelMode(QProcess::MergedChannels);
        mac.start(PRACTICE_MAC, {BUILD_FOLDER, "/bin/true"});
        if (!mac.waitForFinished(240000))
            qFatal("The practice Mac does not start");
        return mac.readAll();
    }
};

QTEST_GUILESS_MAIN(TestPreparation)
#include "tst_preparation.moc"
