#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

class TDataPrj;

/// Moves a project between its file and the model. Main thread.
class TCtrlProject : public QObject
{
    Q_OBJECT

public:
    TCtrlProject();
    ~TCtrlProject() override;

    /// 0 success, 1 the file could not be read, 2 its content could not be parsed; then no project is
    /// open and errorText() tells why. After a success the caller binds, marks, normalises, validates:
    /// open() does it all.
    [[nodiscard]] int load(const QString& file, TDataPrj& project);
    /// load, then bindAll, markMadeFor, normalizeAll, validateAll and clearChanged.
    [[nodiscard]] int open(const QString& file, TDataPrj& project);
    /// Writes the project so that a crash in the middle leaves the old file. Into the project's own file
    /// this clears the flag of changes, unless a change came meanwhile.
    [[nodiscard]] bool save(const QString& file, TDataPrj& project);
    /// Writes the project as it reads in another folder: relative names of data files lead to the same
    /// files from there. The open project stays what it is, with its flag of changes.
    [[nodiscard]] bool saveCopy(const QString& file, const TDataPrj& project);
    QString errorText() const;

private:
    QString m_errorText;
};

/// An empty project list.
[[nodiscard]] bool writeEmptyList(const QString& file);
/// The template of a project: one configuration "Config" without commands.
QByteArray newProjectBytes();
/// Writes the template.
[[nodiscard]] bool writeNewProject(const QString& file);
/// True if something was written.
[[nodiscard]] bool writeBytes(const QString& file, const QByteArray& bytes);
