#pragma once

#include "tests/domain/practicemac.h"

#include <QModelIndex>

class QTreeView;
class cnbrowser;

// The join options page, as a person works it.

// A wizard on that page, with the computer's name entered.
class JoinWizard : public WizardDriver
{
public:
    explicit JoinWizard(const QString& computerName,
                        const QString& user = PracticeMac::administrator);
};

// Presses Join, which succeeds, and reads the report.
void join(WizardDriver* wizard);

void openAdvancedOptions(WizardDriver* wizard);

// Checks the box of an advanced option, "OPTIONLabel", and fills in its edit, "OPTIONEdit".
void choose(WizardDriver* wizard, const QString& option, const QString& value);

// Opens the browser, waits for the tree, and returns the browser.
cnbrowser* browse(WizardDriver* wizard);

// The item at the end of a path of texts, from the root; invalid when there is none.
QModelIndex itemAt(const QTreeView* tree, const QStringList& path);

// Opens the advanced options and picks the container at the end of this path below the domain.
void pick(WizardDriver* wizard, const QStringList& path);
