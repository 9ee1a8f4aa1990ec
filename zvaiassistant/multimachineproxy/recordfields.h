#pragma once

#include "aicontroller/chatrecords.h"

#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

namespace tavro::aiassistant {

// The fields of each record, in the order in which they stand in its packed form. Packing and unpacking both follow
// this list, so that a record is read as it is written.

template <typename Record>
struct RecordFields;

template <>
struct RecordFields<PictureGenerateInfo> {
    using R = PictureGenerateInfo;
    static constexpr auto list =
        std::make_tuple(&R::style, &R::width, &R::height, &R::useSR, &R::content, &R::enableLogo, &R::logoPositon,
                        &R::logoLanguage, &R::logoOpacity, &R::logoContent);
};

template <>
struct RecordFields<ChatItemBasic> {
    using R = ChatItemBasic;
    static constexpr auto list = std::make_tuple(&R::type, &R::question, &R::picInfo, &R::message);
};

template <>
struct RecordFields<TextGeneratedPack> {
    using R = TextGeneratedPack;
    static constexpr auto list = std::make_tuple(&R::question, &R::answer);
};

template <>
struct RecordFields<PicturedGeneratedPack::Source> {
    using R = PicturedGeneratedPack::Source;
    static constexpr auto list = std::make_tuple(&R::description, &R::url);
};

template <>
struct RecordFields<PicturedGeneratedPack> {
    using R = PicturedGeneratedPack;
    static constexpr auto list = std::make_tuple(&R::content, &R::picInfo, &R::source);
};

template <typename Record>
inline constexpr std::size_t fieldCount = std::tuple_size_v<decltype(RecordFields<Record>::list)>;

// A field that is added to a record must be added to its list as well.

struct AnyField {
    template <typename T>
    operator T() const;
};

template <typename Record, typename Index, typename = void>
struct TakesFields : std::false_type { };

template <typename Record, std::size_t... Index>
struct TakesFields<Record, std::index_sequence<Index...>,
                   std::void_t<decltype(Record{(static_cast<void>(Index), AnyField())...})>> : std::true_type { };

template <typename Record>
inline constexpr bool listsEveryField = TakesFields<Record, std::make_index_sequence<fieldCount<Record>>>::value
    && !TakesFields<Record, std::make_index_sequence<fieldCount<Record> + 1>>::value;

static_assert(listsEveryField<PictureGenerateInfo>);
static_assert(listsEveryField<ChatItemBasic>);
static_assert(listsEveryField<TextGeneratedPack>);
static_assert(listsEveryField<PicturedGeneratedPack::Source>);
static_assert(listsEveryField<PicturedGeneratedPack>);

} // namespace tavro::aiassistant
