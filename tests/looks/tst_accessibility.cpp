#include "tests/looks/scenes.h"
#include "tests/support/wizarddriver.h"

#include <QAbstractButton>
#include <QAccessible>
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
    announcements << source->text(QAccessible::Name) + QString(": ") +
                         source->text(QAccessible::Description);
}

// That of a widget with which a person works; NoRole for any other.
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
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    if (button == nullptr)
        return QAccessible::NoRole;
    return button->isCheckable() ? QAccessible::CheckBox : QAccessible::Button;
}

// Collects the objects that a screen reader reaches from this one down.
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
    void initTestCase()
    {
        setScreenReader(true);
    }

    void cleanupTestCase()
    {
        setScreenReader(false);
    }

    void everyWidgetHasRoleAndName_data()
    {
        addColumns<QString>("scene");
        for (const QString& name : Scenes::names())
            addRow(qPrintable(name), name);
    }

    void everyWidgetHasRoleAndName()
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
            const QAccessible::Role role = expectedRole(widget);
            if (!widget->isVisible() || role == QAccessible::NoRole)
                continue;
            const QByteArray name = widget->objectName().toUtf8();
            QVERIFY2(reachable.contains(widget), name);
            QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
            QVERIFY2(interface->role() == role, name);
            QVERIFY2(!interface->text(QAccessible::Name).isEmpty(), name);
            QCOMPARE(interface->state().disabled != 0, !widget->isEnabled());
        }
    }

    void choicesAreReadWithTheirDescriptions()
    {
        const auto opened = Scenes::open("join-options");
        const auto read = [&](const char* name) {
            auto* widget = child<QWidget>(opened->content(), QString::fromLatin1(name));
            return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Description);
        };
        QVERIFY(read("AutoButton").startsWith(QString("Recommended for most installations.")));
        QVERIFY(read("ZoneButton").startsWith(QString("Recommended for installations in which")));
        QVERIFY(read("ContainerDNBrowse").contains("container from the tree of the domain"));
    }

    void shortcutsAreTold()
    {
        const auto opened = Scenes::open("join-options-advanced");
        for (const char* name :
             {"AdvancedButton", "ForceLeave", "ContainerDNLabel", "PDSLabel", "AliasLabel"}) {
            auto* button = child<QAbstractButton>(opened->content(), QString::fromLatin1(name));
            auto* actions = QAccessible::queryAccessibleInterface(button)->actionInterface();
            QVERIFY2(!button->shortcut().isEmpty(), name);
            QCOMPARE(actions->keyBindingsForAction(QAccessibleActionInterface::pressAction()),
                     QStringList{button->shortcut().toString()});
            QCOMPARE(button->toolTip(), button->shortcut().toString(QKeySequence::NativeText));
        }
    }

    void dialogsAnnounceThemselves_data()
    {
        addColumns<QString, QString>("scene", "announcement");
        addRow("joining", "progress-join",
               "Joining: Joining your Mac to your domain, this may take some time...");
        addRow("loading", "progress-containers",
               "Loading: Loading CN from your domain, this may take some time...");
        addRow("leaving", "progress-leave",
               "Leaving: Leaving your Mac from your domain, this may take some time...");
        addRow("warning", "warning",
               "WARNING: Validation of username, password, and domain failed with this "
               "error:\nCan't authenticate as Administrator: the password is wrong.\n");
        addRow("about", "about",
               "About: Morvanta Join Assistant\nVersion " VERSION " (" BUILD_NUMBER ")");
    }

    void dialogsAnnounceThemselves()
    {
        QFETCH(QString, scene);
        announcements.clear();
        const auto previous = QAccessible::installUpdateHandler(noteAlert);
        const auto opened = Scenes::open(scene);
        QAccessible::installUpdateHandler(previous);
        QCOMPARE(announcements.size(), 1);
        QTEST(announcements.first(), "announcement");
    }
};

WORLD_TEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
