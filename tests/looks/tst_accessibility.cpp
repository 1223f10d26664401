#include "tests/looks/scenes.h"
#include "tests/support/wizarddriver.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>
#include <QTreeView>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace {

QStringList announcements;

// What a screen reader does when it starts; without one, Qt sends no announcements.
void setScreenReader(bool present)
{
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(present);
}

void noteAlert(QAccessibleEvent* event)
{
    if (event->type() != QAccessible::Alert)
        return;
    const QAccessibleInterface* source = event->accessibleInterface();
    announcements << source->text(QAccessible::Name) + QStringLiteral(": ") +
                         source->text(QAccessible::Description);
}

bool isInteractive(const QWidget* widget)
{
    return qobject_cast<const QAbstractButton*>(widget) != nullptr ||
           qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QTextBrowser*>(widget) != nullptr ||
           qobject_cast<const QTreeView*>(widget) != nullptr;
}

QAccessible::Role expectedRole(const QWidget* widget)
{
    if (qobject_cast<const QLineEdit*>(widget) != nullptr)
        return QAccessible::EditableText;
    if (qobject_cast<const QTextBrowser*>(widget) != nullptr)
        return QAccessible::StaticText;
    if (qobject_cast<const QTreeView*>(widget) != nullptr)
        return QAccessible::Tree;
    if (widget->inherits("QRadioButton"))
        return QAccessible::RadioButton;
    if (widget->inherits("QCheckBox") ||
        (widget->inherits("QPushButton") &&
         static_cast<const QAbstractButton*>(widget)->isCheckable()))
        return QAccessible::CheckBox;
    return QAccessible::Button;
}

QStringList labelsOf(QAccessibleInterface* interface)
{
    QStringList texts;
    for (const auto& relation : interface->relations(QAccessible::Label))
        texts << relation.first->text(QAccessible::Name);
    return texts;
}

// The accessible objects from this one down that belong to visible widgets.
void collect(QAccessibleInterface* interface, QSet<const QObject*>* objects)
{
    if (interface == nullptr)
        return;
    objects->insert(interface->object());
    for (int i = 0; i < interface->childCount(); ++i)
        collect(interface->child(i), objects);
}

} // namespace

class TestAccessibility : public WorldTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void everyWidgetHasRoleAndName_data();
    void everyWidgetHasRoleAndName();
    void editsAreTiedToTheirLabels_data();
    void editsAreTiedToTheirLabels();
    void choicesAreReadWithTheirDescriptions();
    void shortcutsAreTold();
    void dialogsAnnounceThemselves_data();
    void dialogsAnnounceThemselves();
    void warningStartsWithItsMessage();
};

void TestAccessibility::initTestCase()
{
    setScreenReader(true);
}

void TestAccessibility::cleanupTestCase()
{
    setScreenReader(false);
}

void TestAccessibility::everyWidgetHasRoleAndName_data()
{
    QTest::addColumn<QString>("scene");
    for (const QString& name : Scenes::names())
        QTest::newRow(qPrintable(name)) << name;
}

void TestAccessibility::everyWidgetHasRoleAndName()
{
    QFETCH(QString, scene);
    const auto opened = Scenes::open(scene);
    QAccessibleInterface* window = QAccessible::queryAccessibleInterface(opened->window());
    QVERIFY(!window->text(QAccessible::Name).isEmpty());
    QVERIFY(!QAccessible::queryAccessibleInterface(opened->content())
                 ->text(QAccessible::Name)
                 .isEmpty());
    QSet<const QObject*> reachable;
    collect(window, &reachable);
    for (auto* widget : opened->window()->findChildren<QWidget*>()) {
        // The parts that Qt's own widgets are made of are read as those widgets.
        if (!widget->isVisible() || !isInteractive(widget) ||
            widget->objectName() == QLatin1String("qt_toolbar_ext_button"))
            continue;
        const QByteArray name = widget->objectName().toUtf8();
        QVERIFY2(reachable.contains(widget), name);
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
        QVERIFY2(interface->role() == expectedRole(widget), name);
        QVERIFY2(!interface->text(QAccessible::Name).isEmpty(), name);
        QCOMPARE(interface->state().disabled != 0, !widget->isEnabled());
    }
}

void TestAccessibility::editsAreTiedToTheirLabels_data()
{
    QTest::addColumn<QString>("scene");
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("label");
    QTest::newRow("domain") << "credentials"
                            << "DomainEdit"
                            << "Active Directory Domain:";
    QTest::newRow("user") << "credentials"
                          << "UsernameEdit"
                          << "Active Directory Username:";
    QTest::newRow("password") << "credentials"
                              << "PasswordEdit"
                              << "Active Directory Password:";
    QTest::newRow("unbind user") << "unbind"
                                 << "ADUser"
                                 << "Active Directory Username:";
    QTest::newRow("unbind password") << "unbind"
                                     << "ADPass"
                                     << "Active Directory Password:";
    QTest::newRow("computer") << "join-options"
                              << "ComputerNameEdit"
                              << "Computer Name: ";
    QTest::newRow("leave user") << "leave"
                                << "UsernameEdit"
                                << "Active Directory Username:";
    QTest::newRow("leave password") << "leave"
                                    << "PasswordEdit"
                                    << "Active Directory Password:";
}

void TestAccessibility::editsAreTiedToTheirLabels()
{
    QFETCH(QString, scene);
    QFETCH(QString, edit);
    QFETCH(QString, label);
    const auto opened = Scenes::open(scene);
    QAccessibleInterface* interface =
        QAccessible::queryAccessibleInterface(child<QLineEdit>(opened->content(), edit));
    QCOMPARE(interface->text(QAccessible::Name), label);
    QCOMPARE(labelsOf(interface), QStringList{label});
}

void TestAccessibility::choicesAreReadWithTheirDescriptions()
{
    const auto opened = Scenes::open(QStringLiteral("join-options"));
    const auto read = [&](const char* name) {
        auto* widget = child<QWidget>(opened->content(), QString::fromLatin1(name));
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Description);
    };
    QVERIFY(read("AutoButton").startsWith(QStringLiteral("Recommended for most installations.")));
    QVERIFY(
        read("ZoneButton").startsWith(QStringLiteral("Recommended for installations in which")));
}

void TestAccessibility::shortcutsAreTold()
{
    const auto opened = Scenes::open(QStringLiteral("join-options-advanced"));
    for (const char* name :
         {"AdvancedButton", "ForceLeave", "ContainerDNLabel", "PDSLabel", "AliasLabel"}) {
        auto* button = child<QAbstractButton>(opened->content(), QString::fromLatin1(name));
        QAccessibleActionInterface* actions =
            QAccessible::queryAccessibleInterface(button)->actionInterface();
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
        QVERIFY2(
            !actions->keyBindingsForAction(QAccessibleActionInterface::pressAction()).isEmpty(),
            name);
        QCOMPARE(button->toolTip(), button->shortcut().toString(QKeySequence::NativeText));
    }
}

void TestAccessibility::dialogsAnnounceThemselves_data()
{
    QTest::addColumn<QString>("scene");
    QTest::addColumn<QString>("announcement");
    QTest::newRow("joining") << "progress-join"
                             << "Joining: Joining your Mac to your domain, this may take some "
                                "time...";
    QTest::newRow("loading") << "progress-containers"
                             << "Loading: Loading CN from your domain, this may take some time...";
    QTest::newRow("leaving") << "progress-leave"
                             << "Leaving: Leaving your Mac from your domain, this may take some "
                                "time...";
    QTest::newRow("warning") << "warning"
                             << "WARNING: Validation of username, password, and domain failed with "
                                "this error:\nCan't authenticate as Administrator: the password is "
                                "wrong.\n";
    QTest::newRow("about") << "about"
                           << "About: Morvanta Join Assistant\nVersion 1.0 (100)";
}

void TestAccessibility::dialogsAnnounceThemselves()
{
    QFETCH(QString, scene);
    announcements.clear();
    const auto previous = QAccessible::installUpdateHandler(noteAlert);
    const auto opened = Scenes::open(scene);
    QAccessible::installUpdateHandler(previous);
    QCOMPARE(announcements.size(), 1);
    QTEST(announcements.first(), "announcement");
}

void TestAccessibility::warningStartsWithItsMessage()
{
    const auto opened = Scenes::open(QStringLiteral("warning-long"));
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("WarningLabel"));
}

WORLD_TEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
