#include "tests/looks/places.h"
#include "tests/support/worldtest.h"

#include <QDir>

// Every widget of every page and dialog is where, and as, the files in places/ say; these are
// written by scripts/render_pictures, and looked at beside the pictures when they change.
class TestPlaces : public WorldTest
{
    Q_OBJECT

private slots:
    void everySceneIsLaidDown();
    void sceneIsLaidOutAsLaidDown_data();
    void sceneIsLaidOutAsLaidDown();
};

void TestPlaces::everySceneIsLaidDown()
{
    QStringList files;
    for (const QString& name : Scenes::names())
        files << name + QStringLiteral(".txt");
    files.sort();
    QCOMPARE(QDir(QStringLiteral(PLACES_FOLDER)).entryList(QDir::Files, QDir::Name), files);
}

void TestPlaces::sceneIsLaidOutAsLaidDown_data()
{
    QTest::addColumn<QString>("scene");
    for (const QString& name : Scenes::names())
        QTest::newRow(qPrintable(name)) << name;
}

void TestPlaces::sceneIsLaidOutAsLaidDown()
{
    QFETCH(QString, scene);
    QFile file(QStringLiteral(PLACES_FOLDER "/%1.txt").arg(scene));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
    QStringList laidDown = QString::fromUtf8(file.readAll()).split('\n');
    QStringList seen = placesOf(scene).split('\n');
    while (!laidDown.isEmpty() && !seen.isEmpty() && laidDown.first() == seen.first()) {
        laidDown.removeFirst();
        seen.removeFirst();
    }
    QCOMPARE(seen, laidDown);
}

WORLD_TEST_MAIN(TestPlaces)
#include "tst_places.moc"
