// SPDX-License-Identifier: MIT
#include <text/MVRPicturePolicy.h>

#include <QDir>
#include <QFileInfo>

namespace {

bool isSlash(QChar character)
{
    return character == QLatin1Char('/') || character == QLatin1Char('\\');
}

// Windows takes either slash for the other.
bool isShare(const QString &path)
{
    return path.size() > 1 && isSlash(path.at(0)) && isSlash(path.at(1));
}

QString withSlash(const QString &folder)
{
    return folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
}

}

MVRPicturePolicy MVRPicturePolicy::anywhere()
{
    MVRPicturePolicy policy;
    policy.m_isAnywhere = true;
    return policy;
}

MVRPicturePolicy MVRPicturePolicy::nowhere()
{
    return MVRPicturePolicy();
}

MVRPicturePolicy MVRPicturePolicy::below(const QString &folder)
{
    MVRPicturePolicy policy;
    const QFileInfo info(folder);
    if (folder.isEmpty() || !info.isDir())
        return policy;
    policy.m_folder = withSlash(QDir::cleanPath(info.absoluteFilePath()));
    policy.m_canonicalFolder = withSlash(info.canonicalFilePath());
    return policy;
}

bool MVRPicturePolicy::allows(const QString &path) const
{
    if (path.isEmpty() || isShare(path))
        return false;
    if (m_isAnywhere || m_folder.isEmpty())
        return m_isAnywhere;
    const QFileInfo info(path);
    const QString absolute = QDir::cleanPath(info.absoluteFilePath());
    if (!absolute.startsWith(m_folder) && !absolute.startsWith(m_canonicalFolder))
        return false;
    const QString canonical = info.canonicalFilePath(); // empty for what is not there
    return canonical.isEmpty() || canonical.startsWith(m_canonicalFolder);
}
