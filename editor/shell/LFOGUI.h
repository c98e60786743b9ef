// SPDX-License-Identifier: MIT
// The editor of the effect: opens and closes its window as often as the host wishes, keeps what it shows in step with
// the effect, and moves edits of the graph into it.
//
//   createEditor(effect);                        // the effect's from then on, and as old as it
//   getRect(&rect); open(window); idle() again and again; close();
//
// All of it is for the user-interface thread [ui] but `setParameter`, which comes on any thread [any] and only leaves a
// note, on which the host's next idle acts; a stored window size alone counts at once. So no other thread ever touches
// a view, nor waits for one that draws.
//
// A resize is never a stretching: it tears the panel down and builds it anew at the new size.
#pragma once

#include "editor/graph/GraphHistory.h"
#include "editor/panel/ReferenceSize.h"
#include "editor/shell/AEffGUIEditor.h"
#include "editor/shell/ParameterNotes.h"
#include "effect/LfoDSP.h"
#include "toolkit/base/CVSTGUITimer.h"
#include "toolkit/base/IControlListener.h"
#include "toolkit/views/CViewContainer.h"

class LFODisplay;
class ResizeControl;

class LFOGUI : public AEffGUIEditor, public VSTGUI::IControlListener, public VSTGUI::CBaseObject {
 public:
  explicit LFOGUI(LfoDSP* effect);
  ~LFOGUI() override;

  bool getRect(ERect** editorRect) override;
  // `parentWindow` as the platform of the widget layer takes it. False without a display; then it stays closed.
  bool open(void* parentWindow) override;
  void close() override;
  void idle() override;                                     // the host's turn
  void setParameter(VstInt32 index, float value) override;  // [any]

  void valueChanged(VSTGUI::CControl* control) override;
  VSTGUI::CMessageResult notify(VSTGUI::CBaseObject* sender, VSTGUI::IdStringPtr message) override;
  virtual void MyIdle();  // the timer's turn
  // Loads the graph that the effect shows into the display; all of it also back into the table that is played.
  virtual void updateEnvFromDSP(bool pointsOnly);

  // Only parameters of the host are edits to it.
  void beginEdit(std::int32_t index) override;
  void endEdit(std::int32_t index) override;

  // Asks for another size, within the limits; the panel follows at the next turn of the timer.
  void resizeTo(double width, double height);

  VSTGUI_CLASS(LFOGUI, VSTGUI::CBaseObject)

  // Of the window, in pixels; what projects store is these without their fractions.
  Shared<double> editorWidth{editor::kReferenceWidth}, editorHeight{editor::kReferenceHeight};
  double graphPixelWidth = 0.0, graphPixelHeight = 0.0;
  bool controlsReady = false;               // the panel is complete
  bool resizePending = false;               // the panel is to be built at another size
  Shared<bool> reloadPending{false};        // points of the graph were automated
  std::int32_t scopeReadIndex = 0;          // how far the effect's traces have been copied
  VSTGUI::CViewContainer* panel = nullptr;  // in the frame while the panel stands, and so the rest
  VSTGUI::CViewContainer* graphContainer = nullptr;
  LFODisplay* display = nullptr;
  ResizeControl* resizeCorner = nullptr;

 private:
  [[nodiscard]] LfoDSP& dsp() const { return *static_cast<LfoDSP*>(effect); }
  // Reference pixels to pixels of the window, whole ones.
  [[nodiscard]] double scaledX(double x) const;
  [[nodiscard]] double scaledY(double y) const;
  [[nodiscard]] VSTGUI::CRect scaledRect(const VSTGUI::CRect& reference) const;
  [[nodiscard]] VSTGUI::CRect windowRect() const;
  void setSize(double width, double height);
  void changeSize(double width, double height);
  void restoreStoredSize();

  void openControls(const VSTGUI::CRect& size);
  void addGraph();
  void addResizeCorner();
  void removeResizeCorner();
  void renewResizeCorner();
  void letGo();
  void closeWindow();
  void destroyStuff();
  void rebuild();
  void startTimer();

  void followEffect();
  void follow(int index, float value);
  void fillDisplay();
  void refreshClock();
  void showOutput(float position);
  void refreshTimes();
  void resizeDragged(const ResizeControl& corner);
  void followCorner(double x, double y);
  void cornerReleased();

  VSTGUI::Counted<VSTGUI::CVSTGUITimer> timer_;
  VSTGUI::Counted<VSTGUI::CBitmap> cornerImage_;
  editor::ParameterNotes notes_;
  editor::GraphHistory history_;  // longer than any display, which a resize makes anew
};

// The editor of an LfoDSP; the effect owns it.
AEffEditor* createEditor(AudioEffectX* effect);
