#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

/// A folder as an installed program has it: the shipped data, to be changed at will, and on request
/// the executables. It goes away with the object.
class TestDir
{
public:
    /// Which data is there from the beginning.
    enum Content { Empty, ShippedData };

    explicit TestDir(Content content = ShippedData);

    QString path() const { return m_dir.path(); }
    /// Absolute path of a file in it, whether it is there or not.
    QString file(const QString& name) const { return m_dir.filePath(name); }
    /// Writes a file, its folders too; gives its path.
    QString write(const QString& name, const QByteArray& bytes) const;
    /// All of a file; empty when there is none.
    QByteArray read(const QString& name) const;
    /// Puts an executable of the build beside the data; gives its path.
    QString addProgram(const QString& name) const;

private:
    QTemporaryDir m_dir;
};
