#pragma once

#include "aicontroller/proxyports.h"

#include <QByteArray>
#include <QVector>

#include <any>
#include <utility>

/// One operation asked of a port, with its argument where it has one.
struct PortCall {
    QByteArray name;
    std::any argument;
    int number; ///< see nextEventNumber()

    template <typename T>
    T as() const
    {
        return std::any_cast<T>(argument);
    }
};

/// Keeps what is sent to the serving machine.
class FakeClientPort : public tavro::aiassistant::ProxyClientPort {
public:
    QVector<PortCall> calls;

    QVector<QByteArray> names() const;

    void generateText(const QString &question) override;
    void generateImage(const tavro::aiassistant::PictureGenerateInfo &info) override;
    void downloadPicture(const QString &url) override;
    void stopGenerate() override;
    void activeDeepseek(bool active) override;
    void activeOnlineSearch(bool active) override;
    void clearCathe() override;
    void clearHistoryRecord() override;
    void updateHeader(const std::vector<std::string> &info) override;
    void clearHeader() override;
    void aiWidgetShow() override;
};

/// Keeps what is sent to the client machines.
class FakeServerPort : public tavro::aiassistant::ProxyServerPort {
public:
    QVector<PortCall> calls;

    QVector<QByteArray> names() const;

    void generateTextFinished(const tavro::aiassistant::TextGeneratedPack &pack) override;
    void generateImageFinished(const tavro::aiassistant::PicturedGeneratedPack &pack) override;
    void downloadPictureFinished(const QString &url) override;
    void stopGenerateFinished() override;
    void deleteGeneratingItem() override;
    void activeDeepseekFinished(bool active) override;
    void activeOnlineSearchFinished(bool active) override;
    void clearCatheFinished() override;
    void clearHistoryRecordFinished() override;
    void clearHeaderFinished() override;
    void requestFailed(const tavro::aiassistant::ChatItemBasic &basic) override;
    void errorOccured(const tavro::aiassistant::ChatItemBasic &basic) override;
    void requestTimeout(const tavro::aiassistant::ChatItemBasic &basic) override;
};
