#pragma once
// The rules of the wizard, written down a second time and without a line of the program's code:
// what a person sees after each step, and what is asked of the tools. The walk holds the program
// against it.

#include <QByteArray>
#include <QMap>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

namespace Model {

// How the tools that a step runs behave.
enum class Outcome {
    Good,
    CheckFails,  // the credential check prints two lines and exits with 1
    CheckSilent, // it exits with 1 and prints nothing
    CheckKilled, // it prints the two lines and is killed
    Bad,         // the join or leave tool or the container script prints two lines, exits with 5
    Silent,      // it prints nothing and exits with 3
    Killed,      // it prints the two lines and is killed
    Cancelled,   // consent has lapsed, and the prompt for a new one is cancelled
    Denied       // the same, but the prompt denies it
};

// What is done while the tools of a step keep the program busy.
enum class Meanwhile {
    Nothing,
    Type,   // a letter
    Press,  // Return, Escape and a click on Next
    Assist, // presses of Next, Back and Finish by an assistive tool
    Close,  // the window
    All
};

enum class Act {
    Start, // of the program
    Next,  // Next, Back and Finish: the buttons of the wizard
    Back,
    Finish,
    Close, // the window
    About, // opens the dialog by its entry and closes it
    Press, // a check box, radio button or the like
    Enter, // text into edits
    Browse,
    Choose,  // in the container browser
    Cancel,  // in the container browser
    Outside, // somebody else joins the Mac or takes it out of its domain
    Flags    // gives "joining" and "enrolling" the next of their four combinations
};

struct Step {
    Act act = Act::Start;
    Outcome outcome = Outcome::Good;
    Meanwhile meanwhile = Meanwhile::Nothing;
    QString widget = {};                           // pressed, or the item chosen
    QVector<QPair<QString, QString>> entries = {}; // edits and their new texts

    QString text() const;
};

// The machine that the program is started on.
struct Machine {
    bool agent = true;
    bool joined = false;
    bool bound = false;
    // Leads from page 0 to page 5, or from page 7 on to one more, which no click does otherwise.
    enum Detour { None, Cloud, AfterLast } detour = None;

    QString name() const;
};

struct View {
    int page = -1;                  // -1 when the window is closed
    QMap<QString, QString> widgets; // visible labels, edits and buttons of the page, by object name
    QStringList buttons;            // the wizard's
    QStringList dialogs;            // that came up during the step: texts of warnings, or "about"
    bool browser = false;           // is open
    bool joining = false;
    bool enrolling = false;
    QStringList commands; // of the step, in order, words parted by "|"

    QString text() const;
};

// What the tools print; the test world and the model have to agree on it.
extern const QString domain;
extern const QString zone;
extern const QString computer;
extern const QString boundDomain;
extern const QString complaint;      // the check's, two lines
extern const QString failure;        // the join's and leave's, two lines
extern const QString typedMeanwhile; // by Meanwhile::Type
extern const QStringList branches;   // of the one container, from the root of the tree

class Rules
{
public:
    explicit Rules(const Machine& machine);

    // The steps a person could take now. The wide set, which the random walks take, also holds
    // further texts and failures, the About dialog, closing, and what somebody else does.
    QVector<Step> steps(bool wide) const;
    // Takes one and tells what is to be seen then.
    View take(const Step& step);
    Machine machine() const
    {
        return mac;
    }
    // All that decides what later steps lead to: where it is equal, so is everything that follows.
    QByteArray state() const;

private:
    // What the wizard holds, page by page, most of it in widgets; a new start forgets it.
    struct Contents {
        QString greetedDomain; // page 0, empty when not joined at start-up
        bool startedJoined = false;

        bool reportUnread = false; // page 1: dsconfigad's line of the domain is still to be read

        QString boundName; // page 2
        QString bindUser, bindPassword;
        QString carriedUser, carriedPassword, carriedDomain; // in hidden edits, for page 3

        QString domain, user, password; // page 3

        bool automatic = true; // page 4
        QString zone, computer;
        bool advanced = false, overwrite = false, appleIds = false, appleIdsEnabled = true;
        bool container = false, server = false, alias = false;
        QString containerName, serverName, aliasName;
        bool wantsCloud = false;
        QString joinOutput;
        bool browser = false;
        QString drawnDomain;
        int loads = 0;

        int option = 1; // page 6
        QString leaveUser, leavePassword;
        // As in the form; never seen, as each visit replaces them.
        QString leaveDomain = "placeholder";
        QString leaveZone = "placeholder";
        QString leaveName = "placeholder";
        QString leaveOutput;

        QString report; // page 7
    };

    void start();
    void restart();
    void next(Outcome outcome);
    void back();
    void adjust(bool forward, Outcome outcome);
    void show(int page, bool forward);
    void initialize(int page);
    void cleanUp(int page);
    bool validate(Outcome outcome);
    int nextId();
    bool probeJoined();
    void run(const QStringList& words);
    bool askForConsent(Outcome outcome);
    bool check(const QString& domain, const QString& user, const QString& password,
               Outcome outcome);
    bool join(Outcome outcome);
    bool leave(Outcome outcome);
    int runHelper(const QStringList& arguments, Outcome outcome, QString* output);
    void hear(Meanwhile meanwhile);
    void enter(const QString& edit, const QString& text);
    void press(const QString& widget);
    void browse(Outcome outcome);
    void choose(const QString& item);
    void refuseBrowsing();

    bool last(int page) const;
    QMap<QString, QString> widgets() const;
    QStringList buttons() const;
    void addJoinOptions(QVector<Step>& steps, bool wide) const;
    void addLeaveSteps(QVector<Step>& steps, bool wide) const;

    Machine mac;
    Contents on;
    QVector<int> history;
    bool backDisabled = false;
    bool consented = false;
    bool joining = false;
    bool enrolling = false;
    QStringList commands;
    QStringList dialogs;
};

} // namespace Model
