#pragma once

#include <QMetaType>
#include <QPixmap>

#include <cstdint>
#include <string>
#include <vector>

namespace tavro::aiassistant {

// The values that travel between the controller, the chat window and the machines that share an assistant. They are
// copied freely, own their text as UTF-8, and may be used on any thread; a QPixmap (AIImage) needs a QGuiApplication.

/// What was asked for.
enum class QuestionType : std::int32_t {
    None = 0, ///< nothing yet: the value of a record that was not filled
    Text = 1, ///< a question, answered in text
    Picture = 2, ///< a description, answered by a picture
};

/// The parameters of one picture request. The names are the keys under which the service receives them.
struct PictureGenerateInfo {
    std::string style; ///< name of the style; empty leaves it to the service
    std::int32_t width = 3840; ///< px
    std::int32_t height = 2160; ///< px
    bool useSR = true; ///< ask for super-resolution
    std::string content; ///< description of the picture
    bool enableLogo = false; ///< stamp a logo on the picture
    std::uint8_t logoPositon = 0; ///< position code of the logo; the service's key is spelt so
    bool logoLanguage = false; ///< language choice of the logo's text
    float logoOpacity = 0.35F; ///< 0 (invisible) to 1
    std::string logoContent = "width"; ///< text of the logo; the service expects this default
};

/// One received picture.
struct AIImage {
    QPixmap pixmap; ///< null where the picture could not be fetched or read
    std::string description; ///< the service's description of it
    std::string url; ///< address from which it was fetched; also what a download is asked for with
};

/// One question as the chat window shows it, and the subject of every error report.
struct ChatItemBasic {
    QuestionType type = QuestionType::None; ///< which of the two kinds
    std::string question; ///< what the user asked
    PictureGenerateInfo picInfo; ///< what was sent for a picture; the defaults for a text question
    std::string message; ///< the service's error text; empty unless it reported an error
};

/// A question with the pictures that answered it.
struct ChatItemContext : ChatItemBasic {
    std::vector<AIImage> images; ///< in the order of arrival
};

/// A finished text answer.
struct TextGeneratedPack {
    std::string question; ///< what the user asked
    std::string answer; ///< the whole answer
};

/// A finished picture answer whose picture has not been fetched yet.
struct PicturedGeneratedPack {
    /// What the service said of the picture.
    struct Source {
        std::string description; ///< in words; may be empty
        std::string url; ///< where to fetch it
    };

    std::string content; ///< what the user asked
    PictureGenerateInfo picInfo; ///< what was sent
    Source source; ///< what came back
};

} // namespace tavro::aiassistant

Q_DECLARE_METATYPE(tavro::aiassistant::AIImage)
Q_DECLARE_METATYPE(tavro::aiassistant::ChatItemContext)
Q_DECLARE_METATYPE(tavro::aiassistant::TextGeneratedPack)
Q_DECLARE_METATYPE(tavro::aiassistant::PicturedGeneratedPack)
