#pragma once

#include "aicontroller/chatrecords.h"

#include <QByteArray>
#include <QVector>

#include <string>
#include <vector>

// The values of the vectors' cases, as this side of the wire writes them down.
namespace samples {

tavro::aiassistant::PictureGenerateInfo picture();
tavro::aiassistant::ChatItemBasic chatItem();
tavro::aiassistant::TextGeneratedPack text();
tavro::aiassistant::PicturedGeneratedPack pictured();
std::vector<std::string> list();

struct Packed {
    QByteArray type;
    QByteArray name;
    QByteArray payload; ///< by the code under test
};

/// Every case, packed.
QVector<Packed> all();

} // namespace samples
