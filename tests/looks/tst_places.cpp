#include "tests/looks/places.h"
#include "tests/support/files.h"
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
        const QByteArray laidDown = readFile(PLACES_FOLDER "/" + scene + ".txt");
        QCOMPARE(layoutOf(scene).split('\n'), QString::fromUtf8(laidDown).split('\n'));
    }
};

WORLD_TEST_MAIN(TestPlaces)
#include "tst_places.moc"
