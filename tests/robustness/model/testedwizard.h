#pragma once

#include "app/wizard.h"
#include "tests/robustness/model/model.h"

#include <QObject>

#include <memory>

// The real wizard in the test world: takes the model's steps with clicks and tells what is
// seen, in the model's terms.
class TestedWizard : public QObject
{
    Q_OBJECT

public:
    explicit TestedWizard(const Model::Machine& machine);

    // The tools answer as this machine: the model's before the step, or after it for Act::Outside.
    Model::View take(const Model::Step& step, const Model::Machine& machine);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void start();
    void browse();
    void choose(const QString& item);
    void queue(Model::Meanwhile meanwhile) const;
    void press(const QString& widget);
    QDialog* openBrowser() const;
    QMap<QString, QString> widgets() const;
    QStringList buttons() const;

    Model::Machine::Detour detour;
    std::unique_ptr<Wizard> wizard;
    QStringList dialogs;
};
