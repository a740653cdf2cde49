// SPDX-License-Identifier: MIT
#include "support/fakeplatform.h"

void FakePanels::open(const OpenPanelRequest& request, PanelCompletion completion)
{
    openRequests.append(request);
    m_waiting.append(std::move(completion));
}

void FakePanels::save(const SavePanelRequest& request, PanelCompletion completion)
{
    saveRequests.append(request);
    m_waiting.append(std::move(completion));
}

void FakePanels::confirm(const QUrl& location)
{
    answer({true, location});
}

void FakePanels::confirmWithoutLocation()
{
    answer({true, std::nullopt});
}

void FakePanels::cancel()
{
    answer({});
}

void FakePanels::answer(const PanelResult& result)
{
    Q_ASSERT_X(isOpen(), "FakePanels", "no panel is open");
    const PanelCompletion completion = m_waiting.takeFirst();
    completion(result);
}

void FakeAlerts::critical(const QString& message, const QString& informativeText)
{
    shown.append({message, informativeText});
}

bool FakeAlerts::offer(const QString& message, const QString& informativeText, const QString&)
{
    shown.append({message, informativeText});
    return takesOffers;
}

Result<OSLogStore> FakeLogStores::local(const logstore::OpenWatch& watch)
{
    opened.append(QString());
    if (!localPath)
        return failure("The local log store may not be read.");
    return OSLogStore::open(*localPath, logstore::StoreOrigin::HandedOver, watch);
}

Result<OSLogStore> FakeLogStores::archive(const QString& path, const logstore::OpenWatch& watch)
{
    opened.append(path);
    return OSLogStore::open(path, logstore::StoreOrigin::HandedOver, watch);
}

Result<QByteArray> FakeProcessRunner::output(const QString& program, const QStringList& arguments)
{
    runs.append(QStringList(program) + arguments);
    if (!answer)
        return failure("The program could not be run.");
    return *answer;
}
