#include "tests/looks/clippings.h"
#include "tests/looks/scenes.h"
#include "tests/support/worldtest.h"
#include "widgets/scrollingarea.h"
#include "widgets/wrappinglabel.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

// A domain of 64 characters, the most that a domain of Active Directory may have.
const Scenes::Setting longNames{"research-and-development.manufacturing.subsidiary.example-it.com",
                                "MacZone", "research-mac-0142-on-the-second-floor"};

QString lengthened(const QString& text)
{
    return text.isEmpty() ? text : text + QLatin1Char(' ') + text.left(text.size() * 3 / 10);
}

// As a translation into a wordier language would have them.
void lengthenTexts(const QWidget* window)
{
    for (auto* label : window->findChildren<QLabel*>())
        label->setText(lengthened(label->text()));
    for (auto* button : window->findChildren<QAbstractButton*>())
        button->setText(lengthened(button->text()));
    for (auto* edit : window->findChildren<QLineEdit*>())
        edit->setPlaceholderText(lengthened(edit->placeholderText()));
}

// The sizes for which the pages are made, in points: 10 to 14 on a Mac, which shows 13 and has 72
// dots to the inch, and 9 to 11 on other desktops, which show 9 or 10.
QList<int> pointSizes()
{
    if (qEnvironmentVariableIntValue("QT_FONT_DPI") == 72)
        return {10, 11, 12, 13, 14};
    return {9, 10, 11};
}

void setFontSize(int points)
{
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

QStringList clippingsInAllSizes(QWidget* window)
{
    QStringList found;
    window->setUpdatesEnabled(false); // painting takes longest, and nothing is found by it
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QApplication::setLayoutDirection(direction);
        for (const int points : pointSizes()) {
            setFontSize(points);
            for (const QString& finding : clippings(window))
                found << QString("%1 points, %2: %3")
                             .arg(points)
                             .arg(direction == Qt::LeftToRight ? "left to right" : "right to left")
                             .arg(finding);
        }
    }
    return found;
}

QPoint cornerOf(const QWidget* widget)
{
    return widget->mapTo(widget->window(), QPoint());
}

} // namespace

class TestLayout : public WorldTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        desktopPointSize = QApplication::font().pointSize();
    }

    void cleanup()
    {
        QApplication::setLayoutDirection(Qt::LeftToRight);
        setFontSize(desktopPointSize);
        WorldTest::cleanup();
    }

    void nothingIsCutOff_data()
    {
        addColumns<QString, bool>("scene", "longTexts");
        for (const QString& name : Scenes::names()) {
            addRow(qPrintable(name), name, false);
            addRow(qPrintable(name + ", 30 % longer"), name, true);
        }
    }

    void nothingIsCutOff()
    {
        QFETCH(QString, scene);
        QFETCH(bool, longTexts);
        const auto opened = Scenes::open(scene, longNames);
        const QSize size = opened->window()->size();
        if (longTexts)
            lengthenTexts(opened->window());
        const QStringList found = clippingsInAllSizes(opened->window());
        QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
        QCOMPARE(opened->window()->size(), size); // the window doesn't make room by growing
    }

    void clippingIsFound()
    {
        NEEDS_TOOLS();
        setFontSize(10);
        const auto opened = Scenes::open("credentials");
        QCOMPARE(clippings(opened->window()), QStringList());
        auto* introduction = child<QLabel>(opened->content(), "label_4");
        introduction->resize(introduction->width(), introduction->height() / 2);
        QCOMPARE(clippings(opened->window()).size(), 1);
        introduction->resize(introduction->width(), opened->window()->height());
        const QStringList found = clippings(opened->window());
        QVERIFY(!found.filter(QString("partly outside")).isEmpty());
        QVERIFY(!found.filter(QString("overlaps with QLabel label_4")).isEmpty());
    }

    void lineEndsAfterATextAreNotSeen()
    {
        WrappingLabel label("example.test");
        label.resize(200, 100);
        const QImage alone = label.grab().toImage();
        label.setText("example.test\r\n\n");
        QCOMPARE(label.grab().toImage(), alone);
    }

    void eachLineOfATextHasItsRoom()
    {
        constexpr int width = 300;
        WrappingLabel label("example.test");
        const int line = label.heightForWidth(width);
        label.setText("example.test\nand\nmore");
        QCOMPARE(label.heightForWidth(width), 3 * line);
        QCOMPARE(label.sizeHint().height(), 3 * line);
        QCOMPARE(label.sizeHint().width(), WrappingLabel("example.test").sizeHint().width());
    }

    // Only the first 10,000 characters are laid out: a line that begins after them gets no room.
    void aTextIsLaidOutAsFarAsItsTenThousandthCharacter()
    {
        constexpr int width = 300;
        const int line = WrappingLabel("yy").heightForWidth(width);
        const QString lines = QString("\nx").repeated(4999);
        WrappingLabel label("yy" + lines);
        const int height = label.heightForWidth(width);
        QCOMPARE(height, 5000 * line);
        label.setText("y" + lines + "\nx");
        QCOMPARE(label.heightForWidth(width), height);
    }

    void aScrollingAreaIsNotSeen()
    {
        QWidget page;
        page.setPalette(QPalette(Qt::red));
        auto* area = new ScrollingArea(&page);
        area->setPalette(QPalette(Qt::blue));
        area->setWidget(new QWidget);
        page.resize(area->size());
        page.show();
        QImage red = page.grab().toImage();
        red.fill(Qt::red);
        QCOMPARE(page.grab().toImage(), red);
    }

    void aClickOnAChoiceThatIsCutOffCounts()
    {
        ScrollingArea area;
        auto* contents = new QWidget;
        auto* layout = new QVBoxLayout(contents);
        for (int i = 0; i < 20; ++i)
            layout->addWidget(new QRadioButton("choice"));
        area.setWidget(contents);
        area.show();
        QVERIFY(QTest::qWaitForWindowActive(&area));
        auto* choice = contents->findChildren<QRadioButton*>().at(10);
        area.resize(200, choice->geometry().center().y() + 2);
        QTRY_VERIFY(!area.viewport()->rect().contains(choice->geometry()));
        clickThroughWindow(choice);
        QVERIFY(choice->isChecked());
    }

    void choicesStandBesideTheirDescriptions()
    {
        NEEDS_TOOLS();
        const auto opened = Scenes::open("join-options-advanced");
        const auto placeOf = [&](const char* name) {
            const auto* widget = child<QWidget>(opened->content(), name);
            return QRect(cornerOf(widget), widget->size());
        };
        for (const int points : pointSizes()) {
            setFontSize(points);
            const QRect automatic = placeOf("label_2");
            const QRect zone = placeOf("label_4");
            QCOMPARE(placeOf("AutoButton").top(), automatic.top());
            QCOMPARE(placeOf("ZoneButton").top(), zone.top());
            QVERIFY(placeOf("ZoneEdit").top() > zone.bottom() + 1);
            QCOMPARE(placeOf("ZoneEdit").left(), zone.left());
            QCOMPARE(placeOf("ZoneEdit").left(), automatic.left());
        }
    }

    void chosenContainerIsMarkedUpToTheRightEdge()
    {
        NEEDS_TOOLS();
        const auto opened = Scenes::open("containers");
        auto* tree = child<QTreeView>(opened->content(), "browserTree");
        auto* model = qobject_cast<QStandardItemModel*>(tree->model());
        const auto end = [tree] { return tree->visualRect(tree->currentIndex()).right(); };
        QCOMPARE(end(), tree->viewport()->rect().right());
        QVERIFY(!tree->verticalScrollBar()->isVisible());
        // The same beside a vertical scroll bar. A name that needs more room gets a horizontal one.
        for (int i = 0; i < 100; ++i)
            model->appendRow(new QStandardItem("OU=Macs"));
        QTRY_VERIFY(tree->verticalScrollBar()->isVisible());
        QTRY_COMPARE(end(), tree->viewport()->rect().right());
        QVERIFY(!tree->horizontalScrollBar()->isVisible());
        model->item(0)->appendRow(new QStandardItem(QString(200, QLatin1Char('m'))));
        tree->setCurrentIndex(tree->model()->index(1, 0, tree->model()->index(0, 0)));
        QTRY_VERIFY(tree->horizontalScrollBar()->isVisible());
    }

    void namesThatAreScrolledToAreNotCutOff()
    {
        NEEDS_TOOLS();
        const auto opened = Scenes::open("containers");
        auto* tree = child<QTreeView>(opened->content(), "browserTree");
        auto* model = qobject_cast<QStandardItemModel*>(tree->model());
        for (int i = 0; i < 100; ++i)
            model->appendRow(new QStandardItem("OU=Macs"));
        const QString longest(200, QLatin1Char('m'));
        model->appendRow(new QStandardItem(longest));
        QTRY_VERIFY(tree->verticalScrollBar()->isVisible());
        QVERIFY(!tree->horizontalScrollBar()->isVisible());
        tree->setFocus();
        QTest::keyClick(tree, Qt::Key_End);
        QTRY_VERIFY(tree->columnWidth(0) >
                    tree->indentation() + tree->fontMetrics().horizontalAdvance(longest));
        QTRY_VERIFY(tree->horizontalScrollBar()->isVisible());
        // Out of view it keeps its room, also when the header measures anew.
        tree->scrollToTop();
        tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        QCoreApplication::processEvents();
        QVERIFY(tree->columnWidth(0) > tree->fontMetrics().horizontalAdvance(longest));
        // Another tree doesn't keep the room.
        model->removeRow(model->rowCount() - 1);
        tree->setModel(nullptr);
        tree->setModel(model);
        QTRY_VERIFY(!tree->horizontalScrollBar()->isVisible());
    }

    void editsAreAligned_data()
    {
        addColumns<QString, QStringList>("scene", "edits");
        addRow("unbind", "unbind", QStringList{"ADUser", "ADPass"});
        addRow("credentials", "credentials",
               QStringList{"DomainEdit", "UsernameEdit", "PasswordEdit"});
        addRow("options", "join-options-advanced",
               QStringList{"ContainerDNEdit", "PDSEdit", "AliasEdit"});
        addRow("leave", "leave",
               QStringList{"ComputerName_Val", "ActiveDirectory_Val", "JoinedZone_Val",
                           "UsernameEdit", "PasswordEdit"});
    }

    void editsAreAligned()
    {
        NEEDS_TOOLS();
        QFETCH(QString, scene);
        QFETCH(QStringList, edits);
        const auto opened = Scenes::open(scene);
        for (const int points : pointSizes()) {
            setFontSize(points);
            for (const QString& edit : edits)
                QCOMPARE(cornerOf(child<QWidget>(opened->content(), edit)).x(),
                         cornerOf(child<QWidget>(opened->content(), edits.first())).x());
        }
    }

private:
    int desktopPointSize = 0;
};

WORLD_TEST_MAIN(TestLayout)
#include "tst_layout.moc"
