// The open illustration: a model in the host, its parts list, its label templates, and its callouts' engine.

#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/document/LayoutChoice.h"
#include "app/document/LeaderChoice.h"
#include "app/document/PaperChoice.h"
#include "app/document/PictureChoice.h"
#include "app/document/ProductModel.h"
#include "app/document/TemplateLibrary.h"
#include "callouts/Callouts.h"
#include "dg/Camera3D.h"
#include "du/SmartPtr.h"
#include "zrannotations/Inset.h"
#include "zritemlist/ItemList.h"
#include "zrk/illustration/SbomInstanceSelectionItem.h"

namespace zrsheet {

/// From 0 to 100; called on any thread, one at a time. Returns whether the work is to go on.
using ProgressSink = std::function<bool(int percent)>;

/// Needs a host session; one document at a time. One thread. The callouts component is loaded by its name;
/// its engine leaves the scene when the document closes. What changes while a zrk::Transaction is open on the
/// scene becomes one entry of the scene's history.
class Document {
public:
    using CalloutPtr = du::SmartPtr<zrannotations::Callout>;
    using SbomPtr = ProductModel::SbomPtr;
    using ShapePtr = du::SmartPtr<zrk::ShapeInstance>;
    using Patterns = std::vector<std::string>;

    struct Settings {
        int width = 1600;  // of the page, pixels
        int height = 1000;
        LeaderChoice leaders = LeaderChoice::One;
        zrk::illustration::Numbering numbering{};
        std::string labelTemplate = "{item}";
    };

    /// The template that a document starts with.
    static constexpr const char* kFirstTemplate = "label";

    /// Takes over the model, lists its parts and binds an engine to its scene; no callouts yet. Throws
    /// UserError when the component is missing or the template is wrong.
    Document(Assembly assembly, const Settings& settings);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    ~Document();

    [[nodiscard]] ProductModel& Model() { return m_model; }
    [[nodiscard]] const ProductModel& Model() const { return m_model; }
    [[nodiscard]] const du::SmartPtr<zrk::illustration::Illustration3dScene>& Scene() const {
        return m_model.Scene();
    }
    [[nodiscard]] const du::SmartPtr<zrk::ShapeView>& View() const { return m_model.View(); }
    [[nodiscard]] const du::SmartPtr<zrcallouts::Callouts>& Engine() const { return m_engine; }
    [[nodiscard]] zritemlist::ItemList& ItemList() const { return *m_itemList; }
    [[nodiscard]] const du::SmartPtr<zrk::illustration::ItemsList>& Items() const {
        return m_itemList->GetZrkItemList();
    }

    // Settings. Setters can be undone.
    [[nodiscard]] int PageWidth() const { return m_page.first; }
    [[nodiscard]] int PageHeight() const { return m_page.second; }
    void SetPage(int width, int height);
    [[nodiscard]] LeaderChoice Leaders() const;
    void SetLeaders(LeaderChoice choice);
    /// Of the sheet's own texts. Throws UserError for a language that has none.
    [[nodiscard]] std::string Language() const;
    void SetLanguage(const std::string& language);

    /// Of all callouts that have none of their own.
    [[nodiscard]] const zrannotations::CalloutStyle& Style() const { return m_style; }
    void SetStyle(const zrannotations::CalloutStyle& style);

    /// How the model is drawn.
    [[nodiscard]] const PictureChoice& Picture() const { return m_picture; }
    void SetPicture(const PictureChoice& picture);

    /// How labels are arranged when they are.
    [[nodiscard]] const LayoutChoice& Layout() const { return m_layout; }
    void SetLayout(const LayoutChoice& layout);

    /// What the sheet is printed on; a size of paper counts instead of the page's pixels.
    [[nodiscard]] const PaperChoice& Paper() const { return m_paper; }
    void SetPaper(const PaperChoice& paper);

    // Label templates. Changes can be undone.
    [[nodiscard]] const TemplateLibrary& Templates() const { return m_templates; }
    /// Defines or changes a template. Throws UserError when a text is wrong.
    void DefineTemplate(const NamedTemplate& named);
    /// Throws UserError for one that is not there.
    void RemoveTemplate(const std::string& name);
    /// The template for new callouts.
    [[nodiscard]] std::string CurrentTemplate() const;
    /// One that is there, or a ready one that is there from then on. Throws UserError for one that is
    /// nowhere.
    TemplateLibrary::Entry DefinedTemplate(const std::string& name);
    /// The same.
    void UseTemplate(const std::string& name);

    // What patterns mean (see InstancePattern.h). None: everything.
    [[nodiscard]] std::vector<SbomPtr> FindInstances(const Patterns& patterns) const;
    /// The shapes in the scene of what matches.
    [[nodiscard]] std::vector<ShapePtr> FindShapes(const Patterns& patterns) const;
    /// The callout of that id (see CalloutIds.h), else those whose label matches.
    [[nodiscard]] std::vector<CalloutPtr> FindCallouts(const std::string& name) const;
    /// In the order in which they were made; "inset-1" is the first.
    [[nodiscard]] std::vector<du::SmartPtr<zrannotations::Inset>> Insets() const;
    /// In the order of their items in the list, those without item last.
    [[nodiscard]] std::vector<CalloutPtr> Callouts() const;

    /// Whether the author chose the place of its label.
    [[nodiscard]] bool IsPlacedByHand(const CalloutPtr& callout) const {
        return m_placedByHand.contains(callout);
    }
    /// Can be undone.
    void SetPlacedByHand(const CalloutPtr& callout, bool isPlaced);

    /// Creates the callouts of all listed parts that match and have none, in the task pool, and waits (see
    /// CalloutUpdate.h). Throws UserError when nothing matches, and Interrupted when the sink says so; then
    /// there are none.
    void CreateCallouts(const Patterns& patterns, const ProgressSink& progress);
    /// Waits for the task pool, answers the picks that find the leaders' ends, and checks anew which leaders
    /// are covered when parts or the camera changed.
    void Settle();

    /// False when there is nothing to undo. Settles.
    bool Undo();
    bool Redo();

private:
    /// What decides which leaders are covered.
    struct Look {
        std::uint64_t revision = 0;  // of the parts
        dg::Camera3D camera;
        bool drawsHidden = false;
    };

    void ListParts();
    void TakeLeadersForVisible() const;
    [[nodiscard]] Look CurrentLook() const;
    void ApplyLeaders(LeaderChoice choice);
    void ApplyLanguage(const std::string& language);
    /// For what is no change of a host object: `redo` has been done.
    void Record(std::function<void()> undo, std::function<void()> redo) const;

    ProductModel m_model;
    TemplateLibrary m_templates;
    du::SmartPtr<zritemlist::ItemList> m_itemList;
    du::SmartPtr<zrcallouts::Callouts> m_engine;
    std::pair<int, int> m_page;
    zrannotations::CalloutStyle m_style;
    PictureChoice m_picture;
    LayoutChoice m_layout;
    PaperChoice m_paper;
    std::set<CalloutPtr> m_placedByHand;
    Look m_checked;  // when leaders were last checked
};

}  // namespace zrsheet
