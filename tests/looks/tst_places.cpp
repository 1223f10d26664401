#include "tests/looks/places.h"
#include "tests/support/worldtest.h"

#include <QDir>

// Every visible widget of every scene has the place and the looks that the files in places/ tell.
// scripts/render_pictures writes them; when they change, somebody looks at the new pictures.
class TestPlaces : public WorldTest
{
    Q_OBJECT

private slots:
    void everySceneIsLaidDown()
    {
        QStringList files;
        for (const QString& name : Scenes::names())
            files << name + QString(".txt");
        files.sort();
        QCOMPARE(QDir(QString(PLACES_FOLDER)).entryList(QDir::Files, QDir::Name), files);
    }

    void sceneIsLaidOutAsLaidDown_data()
    {
        addColumns<QString>("scene");
        for (const QString& name : Scenes::names())
            addRow(qPrintable(name), name);
    }

    void sceneIsLaidOutAsLaidDown()
    {
        QFETCH(QString, scene);
        QFile file(QString(PLACES_FOLDER "/%1.txt").arg(scene));
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
        QStringList laidDown = QString::fromUtf8(file.readAll()).split('\n');
        QStringList seen = layoutOf(scene).split('\n');
        while (!laidDown.isEmpty() && !seen.isEmpty() && laidDown.first() == seen.first()) {
            laidDown.removeFirst();
            seen.removeFirst();
        }
        QCOMPARE(seen, laidDown);
    }
};

WORLD_TEST_MAIN(TestPlaces)
#include "tst_places.moc"
