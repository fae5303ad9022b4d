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
        refreshControls();
    });
    grid->Add(m_channel, 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(new DropdownButton(this, skin, Array<int>{wxID_ANY, wxID_ANY},
                                 Array<wxString>{"Reset", "Reset All"}, wxNullBitmap, wxNullBitmap,
                                 Array<Function<void()>>{[this] {
                                                             m_panel->endGesture();
                                                             ColorCurve curves =
                                                                 m_panel->getCurrentCurves();
                                                             const CurveChannel channel =
                                                                 m_panel->getSelectedCurveChannel();
                                                             curves[channel] = Curve();
                                                             change(curves, channel);
                                                         },
                                                         [this] {
                                                             resetAll();
                                                         }},
                                 Button::Behavior::Normal, true),
              0, wxALIGN_CENTER_VERTICAL);
    // The interpolation row: the master curve's mode at opening. Choosing another channel
    // leaves it as it is.
    grid->Add(label(L"Interpolation:"), 0, wxALIGN_CENTER_VERTICAL);
    m_interpolationShown = curves[CurveChannel::Master].interpolation();
    m_interpolation = addChoice(this, {L"Cubic splines", L"Linear splines"}, m_interpolationShown,
                                [this](int index) {
                                    m_panel->endGesture();
                                    ColorCurve changed = m_panel->getCurrentCurves();
                                    const CurveChannel channel = m_panel->getSelectedCurveChannel();
                                    changed[channel].setInterpolation(index);
                                    change(changed, channel);
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
        refreshControls();
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
    m_panel->endGesture();
    change(curves);
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
    m_panel->endGesture();
    change(ColorCurve());
}

void CurveDialog::equalize() {
    if (!m_callbacks)
        return;
    m_panel->endGesture();
    const Histogram histogram = m_callbacks->getHistogram(
        kEqualizeRange, CurveChannel::Master, m_panel->GetSize().x - 2 * CurvePanelModel::kMargin);
    ColorCurve curves = m_panel->getCurrentCurves();
    curves[CurveChannel::Master] = histogram.computeEqualizingCurve(kEqualizePoints);
    change(curves, CurveChannel::Master);
    m_panel->setHistogramType(HistogramType::Cumulative);
    refreshControls();
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
    m_panel->endGesture();
    ColorCurve curves = m_panel->getCurrentCurves();
    for (const CurveChannel channel : kChannels)
        curves[channel].points() = loaded.value()[static_cast<std::size_t>(channel)].points();
    change(curves);
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
    m_history.edited(before, m_panel->getCurrentCurves());
}

void CurveDialog::change(const ColorCurve& curves, Optional<CurveChannel> only) {
    const ColorCurve before = m_panel->getCurrentCurves();
    if (only)
        m_panel->setCurve(curves[*only], *only, true);
    else
        m_panel->setCurves(curves);
    remember(before);
    m_interpolationShown = curves[m_panel->getSelectedCurveChannel()].interpolation();
    refreshControls();
}

void CurveDialog::refreshControls() {
    m_channel->selectIndex(static_cast<int>(m_panel->getSelectedCurveChannel()), false);
    m_histogram->selectIndex(static_cast<int>(m_panel->histogramType()), false);
    m_interpolation->selectIndex(m_interpolationShown, false);
}

bool CurveDialog::undo() {
    m_panel->endGesture();
    return restore(m_history.undo(m_panel->getCurrentCurves()));
}

bool CurveDialog::redo() {
    m_panel->endGesture();
    return restore(m_history.redo(m_panel->getCurrentCurves()));
}

bool CurveDialog::restore(Optional<ColorCurve> curves) {
    if (!curves)
        return false;
    m_interpolationShown = (*curves)[m_panel->getSelectedCurveChannel()].interpolation();
    m_panel->setCurves(std::move(*curves));
    refreshControls();
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

namespace Detail {

std::size_t CurveHistory::bytesOf(const ColorCurve& curves) {
    std::size_t bytes = sizeof(ColorCurve);
    for (const CurveChannel channel : kChannels)
        bytes += static_cast<std::size_t>(curves[channel].points().size()) * sizeof(CurvePoint);
    return bytes;
}

void CurveHistory::edited(const ColorCurve& before, const ColorCurve& now) {
    if (before == now)
        return;
    for (const ColorCurve& undone : m_redo)
        m_bytes -= bytesOf(undone);
    m_redo.clear();
    push(m_undo, before);
}

Optional<ColorCurve> CurveHistory::undo(const ColorCurve& now) {
    return pop(m_undo, m_redo, now);
}

Optional<ColorCurve> CurveHistory::redo(const ColorCurve& now) {
    return pop(m_redo, m_undo, now);
}

void CurveHistory::push(std::deque<ColorCurve>& steps, const ColorCurve& curves) {
    steps.push_back(curves);
    m_bytes += bytesOf(curves);
    trim();
}

Optional<ColorCurve> CurveHistory::pop(std::deque<ColorCurve>& from, std::deque<ColorCurve>& to,
                                       const ColorCurve& now) {
    if (from.empty())
        return {};
    ColorCurve curves = std::move(from.back());
    from.pop_back();
    m_bytes -= bytesOf(curves);
    push(to, now);
    return curves;
}

void CurveHistory::trim() {
    // The oldest undo steps go first, then the farthest redo steps; the step just added stays.
    const auto over = [this] {
        return static_cast<int>(m_undo.size()) > m_maxSteps ||
               (m_bytes > m_maxBytes && m_undo.size() + m_redo.size() > 1);
    };
    while (over() && !m_undo.empty() && (m_undo.size() > 1 || m_redo.empty())) {
        m_bytes -= bytesOf(m_undo.front());
        m_undo.pop_front();
    }
    while (over() && m_redo.size() > 1) {
        m_bytes -= bytesOf(m_redo.front());
        m_redo.pop_front();
    }
}

} // namespace Detail
} // namespace Varnel::Wx
