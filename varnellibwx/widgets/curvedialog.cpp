#include <varnellibwx/widgets/curvedialog.h>

#include <varnellib/native/filedialog.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/messagedialog.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/acvfile.h>
#include <varnellibwx/widgets/button.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/dropdownbutton.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/windowutils.h>

#include <wx/sizer.h>

namespace Varnel::Wx {

namespace {

constexpr int kOuterSpace = 25;
constexpr int kPanelSide = 256;
constexpr int kPanelBorder = 5;
constexpr int kGridGap = 2;
constexpr int kChoiceWidth = 120;
constexpr int kEqualizePoints = 16;
constexpr std::pair<float, float> kEqualizeRange{0.f, 2.f};
const wchar_t* const kErrorTitle = L"Vellum Renderer Error";

constexpr CurveChannel kChannels[] = {CurveChannel::Master, CurveChannel::Red, CurveChannel::Green,
                                      CurveChannel::Blue};

WindowHandle handleOf(wxWindow* window) {
    return WindowHandle(window->GetHandle());
}

} // namespace

CurveDialog::CurveDialog(wxWindow* parent, const GuiSkin& skin, const String& title,
                         const ColorCurve& curves, SharedPtr<ICurveDialogCallbacks> callbacks)
    : wxFrame(parent, wxIdManager::ReserveId(), toWxString(title), wxDefaultPosition, wxDefaultSize,
              wxCAPTION | wxCLIP_CHILDREN | wxSYSTEM_MENU | wxMINIMIZE_BOX | wxCLOSE_BOX |
                  wxRESIZE_BORDER | wxFRAME_NO_TASKBAR),
      m_callbacks(std::move(callbacks)) {
    SetBackgroundColour(toWxColour(skin.background));
    SetForegroundColour(toWxColour(skin.text));
    build(skin, curves);
    Bind(wxEVT_CLOSE_WINDOW, &CurveDialog::onClose, this);
    Bind(wxEVT_SIZE, &CurveDialog::onResize, this);
    Bind(wxEVT_CHAR_HOOK, &CurveDialog::onKey, this);
    setVellumIcon(this);
    if (m_callbacks)
        m_callbacks->onWindowOpened(this);
    Move(m_callbacks ? m_callbacks->getInitialPosition(this) : wxDefaultPosition);
    Show();
}

CurveDialog::~CurveDialog() {
    if (m_callbacks) {
        m_callbacks->onWindowClosed(this);
        m_callbacks->storePosition(GetPosition());
    }
    m_callbacks.reset();
}

ComboBox* CurveDialog::addChoice(wxWindow* parent,
                                 const std::initializer_list<const wchar_t*>& labels, int selected,
                                 Function<void(int)> onSelect) {
    auto* combo = new ComboBox(parent, wxID_ANY, kChoiceWidth, onSelect,
                               [this](wxWindow* window, ComboBox::WindowEvent event) {
                                   if (!m_callbacks)
                                       return;
                                   if (event == ComboBox::WindowEvent::DropdownShown)
                                       m_callbacks->onWindowOpened(window);
                                   else if (event == ComboBox::WindowEvent::DropdownHidden)
                                       m_callbacks->onWindowClosed(window);
                               });
    Stack<ComboBox::Item> items;
    int id = 0;
    for (const wchar_t* label : labels)
        items.push({String(label), id++});
    combo->setData(items.view());
    combo->selectIndex(selected, false);
    return combo;
}

void CurveDialog::build(const GuiSkin& skin, const ColorCurve& curves) {
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->AddSpacer(scaleByDpi(kOuterSpace));

    // "Pick" is built first of all; it sits above the panel.
    const wxBitmap pickBitmap = m_callbacks ? m_callbacks->getPickBitmap() : wxNullBitmap;
    m_pick = new Button(this, skin, wxID_ANY, "Pick", pickBitmap, wxNullBitmap, {},
                        Button::Behavior::Toggle);
    m_pick->SetMinSize(wxSize(scaleByDpi(kChoiceWidth / 2), m_pick->GetMinSize().y));
    column->Add(m_pick, 0, wxALIGN_CENTER_HORIZONTAL | wxBOTTOM, scaleByDpi(kGridGap));

    auto* panelRow = new wxBoxSizer(wxHORIZONTAL);
    panelRow->AddSpacer(scaleByDpi(kOuterSpace));
    m_panel =
        new CurvePanel(this, skin, scaleByDpi(wxSize(kPanelSide, kPanelSide)), curves, m_callbacks);
    m_panel->callOnEditFinished([this](const ColorCurve& before) { remember(before); });
    panelRow->Add(m_panel, 1, wxEXPAND | wxALL, kPanelBorder);
    panelRow->AddSpacer(scaleByDpi(kOuterSpace));
    column->Add(panelRow, 1, wxEXPAND);

    auto* grid = new wxFlexGridSizer(3, 3, scaleByDpi(kGridGap), scaleByDpi(kGridGap));
    const auto label = [this](const wchar_t* text) {
        return new StaticText(this, wxID_ANY, String(text));
    };
    // The channel row.
    grid->Add(label(L"Channel:"), 0, wxALIGN_CENTER_VERTICAL);
    m_channel = addChoice(this, {L"Brightness", L"Red", L"Green", L"Blue"}, 0, [this](int index) {
        m_panel->setSelectedCurve(static_cast<CurveChannel>(index));
    });
    grid->Add(m_channel, 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(new DropdownButton(this, skin, Array<int>{wxID_ANY, wxID_ANY},
                                 Array<wxString>{"Reset", "Reset All"}, wxNullBitmap, wxNullBitmap,
                                 Array<Function<void()>>{
                                     [this] {
                                         const ColorCurve before = m_panel->getCurrentCurves();
                                         m_panel->setCurve(
                                             Curve(), m_panel->getSelectedCurveChannel(), true);
                                         remember(before);
                                     },
                                     [this] {
                                         resetAll();
                                     }},
                                 Button::Behavior::Normal, true),
              0, wxALIGN_CENTER_VERTICAL);
    // The interpolation row: the master curve's mode at opening. Choosing another channel
    // leaves it as it is.
    grid->Add(label(L"Interpolation:"), 0, wxALIGN_CENTER_VERTICAL);
    m_interpolation = addChoice(this, {L"Cubic splines", L"Linear splines"},
                                curves[CurveChannel::Master].interpolation(), [this](int index) {
                                    const ColorCurve before = m_panel->getCurrentCurves();
                                    const CurveChannel channel = m_panel->getSelectedCurveChannel();
                                    Curve curve = before[channel];
                                    curve.setInterpolation(index);
                                    m_panel->setCurve(curve, channel, true);
                                    remember(before);
                                });
    grid->Add(m_interpolation, 0, wxALIGN_CENTER_VERTICAL);
    // "Load" and "Save".
    auto* files = new wxBoxSizer(wxHORIZONTAL);
    files->Add(
        new Button(this, skin, wxID_ANY, "Load", wxNullBitmap, wxNullBitmap, [this] { load(); }), 0,
        wxRIGHT, scaleByDpi(kGridGap));
    files->Add(
        new Button(this, skin, wxID_ANY, "Save", wxNullBitmap, wxNullBitmap, [this] { save(); }));
    grid->Add(files, 0, wxALIGN_CENTER);
    // The histogram row.
    grid->Add(label(L"Histogram:"), 0, wxALIGN_CENTER_VERTICAL);
    m_histogram = addChoice(this, {L"Linear", L"Logarithmic", L"Cumulative"}, 0, [this](int index) {
        m_panel->setHistogramType(static_cast<HistogramType>(index));
    });
    grid->Add(m_histogram, 0, wxALIGN_CENTER_VERTICAL);
    m_equalize = new Button(this, skin, wxID_ANY, "Equalize", wxNullBitmap, wxNullBitmap,
                            [this] { equalize(); });
    grid->Add(m_equalize, 0, wxALIGN_CENTER_VERTICAL);
    for (wxWindow* child : GetChildren())
        if (auto* button = dynamic_cast<Button*>(child))
            button->SetMinSize(
                wxSize(std::max(button->GetMinSize().x, scaleByDpi(kChoiceWidth / 2)),
                       button->GetMinSize().y));
    column->Add(grid, 0, wxALIGN_CENTER_HORIZONTAL | wxTOP | wxBOTTOM, scaleByDpi(kGridGap));
    column->AddSpacer(scaleByDpi(kOuterSpace));

    SetSizerAndFit(column);
    Layout();
    m_sizeDifference = GetSize() - m_panel->GetSize();
}

void CurveDialog::setCurves(ColorCurve curves) {
    m_panel->setCurves(std::move(curves));
}

void CurveDialog::updateHistogram() {
    m_panel->updateHistogram();
}

AutoPtr<ICurvePanelController> CurveDialog::getController() const {
    return m_panel->getController();
}

bool CurveDialog::isPicking() const {
    return m_pick->isToggled();
}

void CurveDialog::enableHistogramControls(bool enable) {
    m_histogram->Enable(enable);
    if (m_equalize)
        m_equalize->Enable(enable);
    Refresh();
}

Button* CurveDialog::button(const wxString& label) const {
    for (wxWindow* child : GetChildren())
        if (auto* found = dynamic_cast<Button*>(child); found && found->GetLabel() == label)
            return found;
    return nullptr;
}

void CurveDialog::resetAll() {
    const ColorCurve before = m_panel->getCurrentCurves();
    m_panel->setCurves(ColorCurve());
    remember(before);
}

void CurveDialog::equalize() {
    if (!m_callbacks)
        return;
    const ColorCurve before = m_panel->getCurrentCurves();
    const Histogram histogram = m_callbacks->getHistogram(
        kEqualizeRange, CurveChannel::Master, m_panel->GetSize().x - 2 * CurvePanelModel::kMargin);
    m_panel->setCurve(histogram.computeEqualizingCurve(kEqualizePoints), CurveChannel::Master,
                      true);
    m_panel->setHistogramType(HistogramType::Cumulative);
    m_histogram->selectIndex(static_cast<int>(HistogramType::Cumulative), false);
    remember(before);
}

void CurveDialog::load() {
    const Io::Path path = filenameOpenDlg(handleOf(this), String(L"Select file"),
                                          String(Detail::kAcvWildcard), Io::Path());
    if (path.isEmpty())
        return;
    const auto loaded = Detail::readAcvFile(path);
    if (!loaded.hasValue()) {
        showOkDialog(handleOf(this), String(kErrorTitle),
                     String(L"Cannot load curves from a file."), MessageDialogIcon::Error);
        return;
    }
    const ColorCurve before = m_panel->getCurrentCurves();
    ColorCurve curves = before;
    for (const CurveChannel channel : kChannels)
        curves[channel].points() = loaded.value()[static_cast<std::size_t>(channel)].points();
    m_panel->setCurves(curves);
    remember(before);
}

void CurveDialog::save() {
    const Io::Path path =
        filenameSaveDlg(handleOf(this), String(L"Save as"), String(Detail::kAcvWildcard),
                        Flags<FileSelect>::fromRaw(1), Io::Path());
    if (path.isEmpty())
        return;
    if (!Detail::writeAcvFile(m_panel->getCurrentCurves(), path))
        showOkDialog(handleOf(this), String(kErrorTitle),
                     String(L"Cannot save curves into a file."), MessageDialogIcon::Error);
}

void CurveDialog::remember(const ColorCurve& before) {
    if (before == m_panel->getCurrentCurves())
        return;
    m_undo.push_back(before);
    if (m_undo.size() > static_cast<std::size_t>(kUndoSteps))
        m_undo.pop_front();
    m_redo.clear();
}

bool CurveDialog::undo() {
    if (m_undo.empty())
        return false;
    m_redo.push_back(m_panel->getCurrentCurves());
    ColorCurve curves = std::move(m_undo.back());
    m_undo.pop_back();
    m_panel->setCurves(std::move(curves));
    return true;
}

bool CurveDialog::redo() {
    if (m_redo.empty())
        return false;
    m_undo.push_back(m_panel->getCurrentCurves());
    ColorCurve curves = std::move(m_redo.back());
    m_redo.pop_back();
    m_panel->setCurves(std::move(curves));
    return true;
}

void CurveDialog::onKey(wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (event.GetModifiers() == wxMOD_CONTROL && key == 'Z')
        undo();
    else if ((event.GetModifiers() == (wxMOD_CONTROL | wxMOD_SHIFT) && key == 'Z') ||
             (event.GetModifiers() == wxMOD_CONTROL && key == 'Y'))
        redo();
    else
        event.Skip();
}

void CurveDialog::onResize(wxSizeEvent& event) {
    event.Skip();
    if (!m_panel || m_sizeDifference == wxSize())
        return;
    m_panel->resize(event.GetSize() - m_sizeDifference);
    Layout();
}

void CurveDialog::onClose(wxCloseEvent&) {
    Hide();
    Destroy();
}

} // namespace Varnel::Wx
