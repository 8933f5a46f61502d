#include "app/command/topics/PictureCommands.h"

#include <array>
#include <charconv>

#include "app/command/Session.h"
#include "app/document/ListColumn.h"
#include "app/document/PaperChoice.h"
#include "app/document/StyleChoices.h"
#include "app/document/UserError.h"
#include "app/document/ViewDirection.h"
#include "app/sheet/Figure.h"
#include "app/sheet/PageLayout.h"
#include "app/text/ProgramText.h"

namespace zrsheet {
namespace {

constexpr double kMostPixels = 20000.0;
constexpr double kLeastZoom = 1e-3;
constexpr double kMostZoom = 1e3;

struct NamedColor {
    std::string_view name;
    std::string_view digits;
};
constexpr std::array<NamedColor, 4> kColors{
    {{"white", "ffffff"}, {"black", "000000"}, {"gray", "c8c8c8"}, {"blue", "dbe7f5"}}};

void Turn(Session& session, Arguments& arguments) {
    const ViewDirection direction = ParseViewDirection(arguments.Take("VIEW"));
    arguments.ExpectEnd();
    FrameModel(session.Doc(), direction);
}

dg::Camera3D CameraOf(const Document& document) {
    dg::Camera3D camera;
    document.View()->GetCamera(camera);
    return camera;
}

void Zoom(Session& session, Arguments& arguments) {
    const double factor = arguments.TakeNumber("FACTOR");
    arguments.ExpectEnd();
    if (factor < kLeastZoom || factor > kMostZoom) {
        throw UserError(arguments.WithUsage("a factor is from 0.001 to 1000"));
    }
    const dg::Camera3D camera = CameraOf(session.Doc());
    const dg::DPoint3D middle(0.5 * camera.GetViewportWidth(), 0.5 * camera.GetViewportHeight(), 0.0);
    session.Doc().View()->SetCamera(camera.Magnified(middle, middle, factor));
}

void Pan(Session& session, Arguments& arguments) {
    const PagePoint by = arguments.TakePoint("X,Y");
    arguments.ExpectEnd();
    session.Doc().View()->SetCamera(CameraOf(session.Doc()).Magnified({}, {by.x, by.y, 0.0}, 1.0));
}

/// The way that the camera looks now.
ViewDirection DirectionOf(const dg::Camera3D& camera) {
    const dg::DMat44& toWorld = camera.GetPixelToWorld();
    const dg::DPoint3D origin = dg::DPoint3D() * toWorld;
    return {dg::DPoint3D(0, 0, 1) * toWorld - origin, dg::DPoint3D(0, -1, 0) * toWorld - origin};
}

/// Frames what is shown anew, and takes the labels along.
void FillPage(Document& document, const ViewDirection& direction) {
    FrameModel(document, direction);
    const dg::Camera3D camera = CameraOf(document);
    document.View()->Resize(camera.GetViewportWidth(), camera.GetViewportHeight());
}

void Resize(Session& session, Arguments& arguments) {
    const PagePoint size = arguments.TakePoint("WIDTH,HEIGHT");
    arguments.ExpectEnd();
    const bool isFit =
        size.x >= kLeastWidth && size.y >= kLeastHeight && size.x <= kMostPixels && size.y <= kMostPixels;
    if (!isFit) {
        throw UserError(arguments.WithUsage("a page is from " + std::to_string(kLeastWidth) + "," +
                                            std::to_string(kLeastHeight) + " to 20000,20000 pixels large"));
    }
    Document& document = session.Doc();
    const ViewDirection direction = DirectionOf(CameraOf(document));
    document.SetPage(static_cast<int>(size.x), static_cast<int>(size.y));
    PaperChoice paper = document.Paper();
    paper.size = PaperSize::None;
    document.SetPaper(paper);
    FillPage(document, direction);
}

/// "a4", "a4 portrait", or "portrait" alone, which turns the paper that there is.
void TakePaper(Arguments& arguments, PaperChoice& choice) {
    for (std::size_t i = 0; i < kTurnWords.size(); ++i) {
        if (!arguments.TakeKeyword(kTurnWords.at(i))) continue;
        choice.turn = static_cast<PaperTurn>(i);
        if (choice.size == PaperSize::None) choice.size = PaperSize::A4;
        return;
    }
    if (!arguments.IsEmpty()) choice.size = ParsePaperSize(arguments.Take("PAPER"));
    if (!arguments.IsEmpty()) choice.turn = ParsePaperTurn(arguments.Take("ORIENTATION"));
}

void ChoosePaper(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    PaperChoice choice = document.Paper();
    const bool isEmpty = arguments.IsEmpty();
    if (const auto list = arguments.TakeOption("list")) choice.list = ParseListPlace(*list);
    if (const auto title = arguments.TakeOption("title")) choice.title = *title;
    if (const auto date = arguments.TakeOption("date")) choice.date = *date;
    if (const auto columns = arguments.TakeOption("columns")) {
        choice.listColumns.clear();
        if (!columns->empty()) choice.listColumns = ParseListColumns(*columns);
    }
    TakePaper(arguments, choice);
    arguments.ExpectEnd();
    if (isEmpty) throw UserError(arguments.WithUsage("nothing to change; give a size of paper or an option"));
    const ViewDirection direction = DirectionOf(CameraOf(document));
    document.SetPaper(choice);
    FillPage(document, direction);
}

void SetLanguage(Session& session, Arguments& arguments) {
    const std::string language = arguments.Take("LANGUAGE");
    arguments.ExpectEnd();
    session.Doc().SetLanguage(language);
    SetSpokenLanguage("");
}

/// "white" ... or six hexadecimal digits.
dg::Color TakeColor(Arguments& arguments) {
    const std::string text = arguments.Take("COLOR");
    std::string_view digits = text;
    if (digits.starts_with('#')) digits.remove_prefix(1);
    for (const NamedColor& color : kColors) {
        if (color.name == text) digits = color.digits;
    }
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.size() != 6 || error != std::errc() || end != digits.data() + digits.size()) {
        throw UserError(arguments.WithUsage(
            "'" + text + "' is no COLOR; use white, black, gray, blue or six digits such as f0e8d0"));
    }
    const auto part = [value](unsigned shift) { return static_cast<float>(value >> shift & 0xFFU) / 255.0F; };
    return {part(16), part(8), part(0), 1.0F};
}

void SetBackground(Session& session, Arguments& arguments) {
    const dg::Color top = TakeColor(arguments);
    const dg::Color bottom = arguments.IsEmpty() ? top : TakeColor(arguments);
    arguments.ExpectEnd();
    session.Doc().View()->SetBackgroundColors(top, bottom, top);
}

bool TakeYesOrNo(Arguments& arguments, const std::string& word) {
    if (word != "yes" && word != "no")
        throw UserError(arguments.WithUsage("'" + word + "' is neither yes nor no"));
    return word == "yes";
}

void ChoosePicture(Session& session, Arguments& arguments) {
    PictureChoice choice = session.Doc().Picture();
    const bool isEmpty = arguments.IsEmpty();
    if (const auto style = arguments.TakeOption("style")) choice.mode = ParsePictureMode(*style);
    if (const auto hidden = arguments.TakeOption("hidden")) choice.hidden = TakeYesOrNo(arguments, *hidden);
    if (const auto outline = arguments.TakeNumberOption("outline")) choice.outline = CheckedOutline(*outline);
    arguments.ExpectEnd();
    if (isEmpty) throw UserError(arguments.WithUsage("nothing to change; give style, hidden or outline"));
    session.Doc().SetPicture(choice);
}

}  // namespace

CommandTopic PictureCommands() {
    return {
        "Picture",
        {{"camera", "VIEW|X,Y,Z", "look at the model from another side",
          "VIEW is iso, front, back, left, right, top or bottom; X,Y,Z is the direction of the look. All "
          "that is "
          "shown fills the picture.",
          "camera -1,-0.5,-1", Effect::Changes, "Turn Camera", Turn},
         {"camera zoom", "FACTOR", "come nearer, or below 1 go away", "", "camera zoom 1.5", Effect::Changes,
          "Zoom Camera", Zoom},
         {"camera pan", "X,Y", "move the picture by pixels", "", "camera pan 40,-20", Effect::Changes,
          "Pan Camera", Pan},
         {"resize", "WIDTH,HEIGHT", "give the page another size, in pixels",
          "What is shown fills the picture again. The page is on no paper then.", "resize 1200,800",
          Effect::Changes, "Resize Page", Resize},
         {"page",
          "[PAPER] [landscape|portrait] [list=sheet|page|none] [title=TEXT] [date=TEXT] [columns=COLUMNS]",
          "put the sheet on paper",
          "PAPER is a4, a3 or letter, with a frame and a title block, or none: a page of pixels. landscape "
          "or "
          "portrait alone turns the paper, and puts a page of pixels on a4. What is shown fills the picture "
          "again; 'layout' arranges the labels for it. The parts list stands above the "
          "title block (sheet), or, also when it is too long for that, on pages of its own (page). COLUMNS "
          "are item, quantity, name, tag, level and property:NAME, with commas between; they are those of "
          "the lists in files, too.",
          "page a4 portrait title='Gear reducer' columns=item,quantity,name,property:Material",
          Effect::Changes, "Choose Paper", ChoosePaper},
         {"background", "COLOR [COLOR]", "draw the model on a colour, or from one to another downwards",
          "COLOR is white, black, gray, blue or six hexadecimal digits. Covered leaders are dimmed "
          "towards it.",
          "background white dbe7f5", Effect::Changes, "Set Background", SetBackground},
         {"picture", "[style=STYLE] [hidden=yes|no] [outline=MM]", "choose how the model is drawn",
          "STYLE is line (lines on white parts, nothing but vectors), shaded (a raster of softly shaded "
          "parts) or both (lines over shaded parts). With hidden=yes covered lines are drawn too, dashed. "
          "outline is the width of the parts' outlines in millimetres on paper; other lines are half as "
          "wide.",
          "picture style=line hidden=yes outline=0.35", Effect::Changes, "Choose Picture", ChoosePicture},
         {"language", "LANGUAGE", "choose the language of sheet and messages",
          "en, de, fr, es or ja. Texts of the sheet, translated templates with all their callouts, and what "
          "commands print follow at once, and follow when it is undone.",
          "language de", Effect::Changes, "Set Language", SetLanguage}}};
}

}  // namespace zrsheet
