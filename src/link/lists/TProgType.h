#pragma once

#include <QHash>
#include <QStringList>

/// The programmer models that the user has: type name to description file. In TAppData.
class TProgType
{
public:
    virtual ~TProgType() = default;

    int count() const;
    /// Empty for a row that does not exist.
    QString name(int row) const;
    /// Empty for a row or type that does not exist.
    QString file(int row) const;
    QString file(const QString& type) const;
    bool contains(const QString& type) const;
    /// A repeated name replaces the file of the first.
    void append(const QString& type, const QString& file);
    void clear();

private:
    QStringList m_names;
    QHash<QString, QString> m_files;
};
