// SPDX-License-Identifier: MIT
// The effect: graphs, settings, clock and audio path behind the VST 2 frame.
//
// Callers, named in brackets at the declarations:
//   [audio]  the host's audio thread; nothing there allocates, locks, waits or throws
//   [ui]     the editor's and host's user-interface thread
//   [any]    any thread, also while a block runs
//   [host, not during a block]  the host's own threads; where a block may be in flight, `gate` keeps it out
// Fields of type `Shared` are touched by more than one thread. Booleans carry a `b`.
//
// Life: construction resumes once, so that blocks may come at once; then sample rate, `resume`, blocks, `suspend`, and
// again; destruction by the host's effClose.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <span>

#include "effect/Crossover.h"
#include "effect/ExpMapper.h"
#include "effect/FilterStage.h"
#include "effect/GraphReader.h"
#include "effect/LfoClock.h"
#include "effect/MidiOut.h"
#include "effect/NoteQueue.h"
#include "effect/PadLFO.h"
#include "effect/ScopeCapture.h"
#include "filters/VFilter.h"
#include "model/CurveLaw.h"
#include "model/ParameterIndex.h"
#include "model/PrivateCalls.h"
#include "model/StateChunk.h"
#include "threads/AudioGate.h"
#include "threads/Shared.h"
#include "vst2/audioeffectx.h"

namespace effect {

inline constexpr VstInt32 kVendorVersion = MODRIFT_VERSION_NUMBER;
inline constexpr int kLongestBlock = 16384;  // frames of the crossover's aside buffers

}  // namespace effect

class LfoDSP : public AudioEffectX {
 public:
  explicit LfoDSP(audioMasterCallback audioMaster);
  ~LfoDSP() override = default;

  VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt) override;
  void suspend() override;  // [any]
  void resume() override;   // [host, not during a block]; waits for a block in flight
  void processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) noexcept override;  // [audio]
  void setParameter(VstInt32 index, float value) override;                                          // [any]
  float getParameter(VstInt32 index) override;                                                      // [any]
  void setProgram(VstInt32 program) override;
  void setProgramName(char* name) override;
  void getProgramName(char* name) override;
  void getParameterLabel(VstInt32 index, char* label) override;
  void getParameterDisplay(VstInt32 index, char* text) override;
  void getParameterName(VstInt32 index, char* text) override;
  // Sets the parameter to what its display would show as `text`; false, and nothing happens, when it shows no such
  // text [host, ui].
  bool string2parameter(VstInt32 index, char* text) override;
  // The state as bytes, the effect's until the next call or its end; hosts keep them in their projects [host].
  VstInt32 getChunk(void** data, bool isPreset) override;
  // Takes a state; a block in flight ends first, the next one plays the new state whole [host, ui]. Meanwhile the host
  // hears of all parameters, and the editor of all that it shows.
  VstInt32 setChunk(void* data, VstInt32 byteSize, bool isPreset) override;
  // The same for the layout before today's; -1 for a chunk that has none, or no version.
  VstInt32 setChunk_Old(void* data, VstInt32 byteSize, bool isPreset);
  bool getProgramNameIndexed(VstInt32 category, VstInt32 index, char* text) override;
  bool getInputProperties(VstInt32 index, VstPinProperties* pin) override;
  bool getOutputProperties(VstInt32 index, VstPinProperties* pin) override;
  bool setSpeakerArrangement(VstSpeakerArrangement* in, VstSpeakerArrangement* out) override;
  VstInt32 getNumMidiInputChannels() override;
  VstInt32 getNumMidiOutputChannels() override;
  VstInt32 processEvents(VstEvents* events) noexcept override;  // [audio]
  VstInt32 getGetTailSize() override;
  bool getEffectName(char* name) override;
  bool getVendorString(char* text) override;
  bool getProductString(char* text) override;
  VstInt32 getVendorVersion() override;
  VstIntPtr vendorSpecific(VstInt32 tag, VstIntPtr value, void* ptr, float opt) override;
  VstInt32 canDo(char* text) override;
  VstPlugCategory getPlugCategory() override;
  bool getMidiKeyName(VstInt32 channel, MidiKeyName* key) override;

  // The text of a value that is passed in, as `getParameterDisplay` writes it for the present one [any].
  void convertParameterValueToString(int index, float value, char* text);
  // The filter's own text of an entry of its parameters, for a normalised type [any].
  void writeFilterText(long entry, float type, char* text) const noexcept;
  [[nodiscard]] float getRecentFilterParam(int index) const noexcept;

  // Graphs.
  void initEnv(int g) noexcept;
  void initClipboard() noexcept;
  void copyEnv(int g) noexcept;                             // [ui]
  void pasteEnv(int g);                                     // [ui]
  void RenderEnvsInCaseGUIClosed(bool firstOnly) noexcept;  // [any]
  void renderEnv(int g) noexcept;                           // [any]
  [[nodiscard]] model::GraphPoints pointsOf(int g) const noexcept;
  void setPoints(int g, const model::GraphPoints& points, int slots) noexcept;  // the first `slots` of them
  void setWarp(int g, float value) noexcept;  // [any] the parameter and its multiplier

  // Files [ui]. Loads read the file at `loadPath`; what cannot be read changes nothing, what cannot be written leaves
  // the file that was there. A load of a shape replaces the points of the current graph; the caller renders.
  void SavePreset(const char* path);
  void LoadPreset();
  void SaveShape(const char* path);
  void LoadShape();
  void ByteSwapLFO() noexcept {}  // where a big-endian build would turn the stored numbers
  // False for a path that does not fit; then the next load finds none.
  bool setLoadPath(const char* path) noexcept;
  // The cutoff graph as a Standard MIDI File at `loadPath` [ui]; blocks leave the outputs alone meanwhile.
  void saveMIDIFile(int mode);

  // Clock.
  void ProcessPadLFO() noexcept;        // [audio], or under `gate`: one sample
  void setFreeLFOTime() noexcept;       // [any]
  void CalculateTrigOffset() noexcept;  // [any]

  // The graphs that move cutoff, resonance, volume, pan and Var, in the order in which they are read.
  [[nodiscard]] std::array<std::int8_t, 5> routes() const noexcept {
    return {routeCut, routeRes, routeVol, routePan, routeVar};
  }

  // Notes and MIDI.
  void ProcessWaitingNote(char note, char unused, char velocity, int frame, bool alsoUnused) noexcept;  // [audio]
  void sendMidiOutEvent(int status, int data1, int data2, int frame) noexcept;                          // [audio]

  void initPadLFO() noexcept;
  void initFilters();
  void setIOCount() noexcept;
  void setChannels(VstInt32 inputs);  // [host, not during a block]

  // --- Settings, by parameter
  PadLFO padLFO;
  Shared<float> filterCutoff{0.5f};
  Shared<float> filterReso{0.01f};
  Shared<float> filterOn{0.0f};
  Shared<std::int8_t> filterOnFlag{0};
  Shared<float> filterDrive{0.0f};
  Shared<float> lfoSmooth{0.0f};
  Shared<bool> bRetrig{false};
  Shared<bool> bOneShot{false};
  Shared<bool> bOneShotDone{false};
  Shared<bool> bGateMode{false};
  Shared<bool> bVelToPwm{false};
  Shared<bool> bNoteToRate{false};
  Shared<std::int8_t> routeCut{0};  // routes: which graph moves the destination, 0 to 11
  Shared<std::int8_t> routeRes{0};
  Shared<std::int8_t> routeVol{0};
  Shared<std::int8_t> routePan{0};
  Shared<std::int8_t> routeVar{0};
  Shared<float> filterVar{0.5f};
  Shared<float> filterMix{1.0f};
  Shared<float> timing{0.5f};
  Shared<float> timingOffset{0.0f};                                    // samples, -4096 to 4096
  std::array<Shared<float>, model::kPointParameters> pendingPoints{};  // what the host set before the first block
  Shared<float> filterType{0.0f};
  Shared<bool> bXoverOn{false};
  Shared<bool> bXoverInvert{false};  // the high band is processed
  Shared<float> xoverFrequency{0.5f};
  Shared<float> filterNameScratch{0.0f};
  Shared<bool> bNoteToCutoff{false};
  Shared<bool> bAnchor{true};  // follow the song; off, the clock runs on when the song stands
  Shared<std::int8_t> currentGraph{0};
  Shared<float> gridSize{0.45f};
  Shared<std::int8_t> ccNumber{0};  // controller 1 to 127; 0 and below is off
  Shared<bool> bCCLock{false};

  // --- Graphs
  std::array<Shared<std::int8_t>, model::kGraphs> envNumPoints{};  // index of the last point
  Shared<double> envX[model::kGraphs][model::kGraphSlots];
  Shared<double> envY[model::kGraphs][model::kGraphSlots];
  Shared<double> envCurve[model::kGraphs][model::kGraphSlots];
  std::array<std::unique_ptr<Shared<float>[]>, model::kGraphs> graphTable;
  std::array<Shared<double>, model::kGraphs> warpMult{};
  effect::EnvClipboard envClipboard;
  Shared<bool> bGraphsDirty{false};  // points of graph 1 were automated; the next block renders it

  // --- Clock
  VstTimeInfo* timeInfo = nullptr;  // the host's, for the length of a block
  Shared<double> tempo{1.0};
  Shared<double> lastHostTempo{0.0};       // also of a standing song; 0 for none
  Shared<double> beatsPerSample{22050.0};  // no block yet; from then on at most 1
  double beatPos = 0.0;                    // beats since the reference point
  Shared<double> trigPos{0.0};
  Shared<double> trigOffset{0.0};
  Shared<double> oneShotLength{0.0};
  Shared<double> freeIncrement{0.0001};
  Shared<double> freePhase{0.0};
  double lfoPhase = 0.0;
  Shared<std::int32_t> displayIndex{0};
  Shared<float> displayPos{0.0f};
  bool activeVol = false, activeVar = false, activePan = false, activeCut = false, activeRes = false;

  // --- Files and the editor's window
  std::array<char, model::kLongestPath + 1> loadPath{};  // [ui] what the next load reads, zero at its end
  Shared<std::int16_t> editorWidth{model::kUsualEditorWidth}, editorHeight{model::kUsualEditorHeight};  // pixels
  // [ui] the size that a click with Control on the window's corner brings back
  int savedEditorWidth = model::kUsualEditorWidth, savedEditorHeight = model::kUsualEditorHeight;
  int timerInterval = 30;  // [ui] ms between two turns of the editor

  // --- Notes and MIDI
  effect::NoteQueue noteQueue;
  int heldNotes = 0;  // 0 to 127
  effect::MidiOut midiOut{effect::MidiOut::Limits::block};
  std::int8_t lastCCValue = -1;  // the last controller value queued; -1 is none that a controller has
  Shared<std::int32_t> midiThinning{64};
  Shared<bool> bDontInsertMIDIEachPPQ_OnRender{false};
  Shared<bool> bNoteSelectsGraphs{false};

  // --- Audio
  Shared<std::int32_t> numIn{2}, numOut{2}, lastIn{1}, lastOut{1};
  Shared<float> sampleRateSafe{44100.0f};
  Shared<bool> bSuspended{false};
  Shared<bool> bWarmedUp{false};  // the first block has run
  Shared<bool> bRenderingMidi{false};
  Shared<bool> bAudioHold{false};  // the MIDI export runs: blocks leave the outputs alone
  AudioGate gate;
  std::array<Shared<float>, filters::kFilterParams> filterParams{};  // as the filter last got them
  float cutMod = 0.5f, varMod = 0.5f, resoMod = 0.01f;
  Shared<float> cutSmoothed{0.5f};
  float panSmoothed = 0.5f, volSmoothed = 1.0f;
  float gainL = 1.0003273f, gainR = 1.0003273f;  // the pan law's value at the centre
  Shared<bool> bScopeOn{false};
  effect::ScopeTrace scopeIn, scopeOut;

 private:
  // Pointers and length of the slice that is being processed.
  struct Slice {
    float* left;
    float* right;
    const float* tickRight;  // where the right channel's tick samples come from
    int offset;              // of the slice in the block
    int frames;
  };

  using ChunkBuffer = std::array<std::byte, model::kChunkBytes>;

  [[nodiscard]] model::State snapshot() const noexcept;
  void takeState(const model::State& state) noexcept;
  void takeStateWhole(const model::State& loaded);
  void resetGraphs() noexcept;
  [[nodiscard]] model::Locks locksFor(bool isPreset) const noexcept;
  void repeatParameters(std::initializer_list<VstInt32> indices);
  void repeatController(const model::Locks& locks);
  void repeatLaterParameters();
  void automateFirst(VstInt32 count);
  void announceGraphs();
  void announceCurrent(const model::LoadedState& loaded, const model::Locks& locks);
  void announceOld(const model::Locks& locks);
  [[nodiscard]] const char* readableLoadPath() const noexcept;

  [[nodiscard]] bool takesNotes() const noexcept;
  bool takeEvent(const VstMidiEvent& event) noexcept;
  void releaseAllNotes() noexcept;
  bool selectsGraph(int note);
  void retrigger(int frame) noexcept;
  void sendCutoffController(int frame) noexcept;
  void endMidiBlock() noexcept;
  void keepMidiForNextBlock() noexcept;

  // The MIDI export's clock, in frames that no host ever plays.
  struct ExportClock {
    double quarterFrames;  // a quarter note's length
    int totalFrames;
    int tickFrames;  // of one of the file's ticks, rounded
  };
  [[nodiscard]] ExportClock startExportClock() noexcept;
  void playForExport(const ExportClock& clock, int mode, int controller, effect::MidiOut& events) noexcept;

  void rebuildForSampleRate();
  void processBufferSetup(bool held) noexcept;
  void splitBands(const float* left, const float* right, const Slice& slice) noexcept;
  void joinBands(const Slice& slice) noexcept;
  void processTicks(const Slice& slice) noexcept;
  void controlTick(const Slice& slice, int start, int frames) noexcept;
  std::array<float, filters::kFilterParams> updateFilterSettings() noexcept;
  void followXoverFrequency() noexcept;
  void dropNonFinite() noexcept;

  void blockStart() noexcept;
  void followHostTempo(double hostTempo) noexcept;
  void standStill(bool modulate) noexcept;
  [[nodiscard]] double divider() const noexcept;
  [[nodiscard]] effect::ClockSettings clockSettings() const noexcept;
  [[nodiscard]] effect::ClockState clockState() const noexcept;
  void storeClock(const effect::ClockState& state) noexcept;
  void readGraphs(double position) noexcept;
  [[nodiscard]] effect::GraphReader graphReader(int g) const noexcept;

  // `track`: the clock's positions in the tick, one per sample for as long as it moved.
  void playTick(const Slice& slice, int start, effect::TickBuffer& tick, int frames) noexcept;
  [[nodiscard]] bool gainsRest() const noexcept;
  void applyGains(effect::TickBuffer& tick, int frames, std::span<const double> track) noexcept;
  void applyMovingGains(effect::TickBuffer& tick, int frames, std::span<const double> track) noexcept;
  void captureOutput(const effect::TickBuffer& tick, int frames, std::span<const double> track) noexcept;

  VGlobalCoeffs filterCoeffs_;
  std::unique_ptr<VFilter> textFilter_;  // answers for the filter's texts and never plays
  effect::FilterStage filterStage_;
  bool bFiltersWarm_ = false;
  Lumbrix::Utility::CExpMapper xoverMapper_ = effect::crossoverMapper();
  float xoverApplied_ = 0.5f;  // the parameter's value that the coefficients were made for
  CrossoverState xoverLeft_, xoverRight_;
  std::array<float, effect::kLongestBlock> asideLeft_{}, asideRight_{};
  bool bSplit_ = false;               // the crossover runs in this block
  bool bFiltered_ = false;            // the filter stage has run since it was last looked at for non-finite states
  effect::ClockSettings blockClock_;  // read off the parameters once a block
  double gainSmoothing_ = 0;          // one-pole factor of pan and volume, for this block
  std::array<char, 24> programName_{' '};
  std::recursive_mutex chunkLock_;  // guards the pointer; never held while the host or the editor is called
  std::unique_ptr<ChunkBuffer> chunk_;
};
