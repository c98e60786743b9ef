// SPDX-License-Identifier: MIT
// The whole state between the live fields and the bytes that hosts keep.
//
// A load first reads all of the chunk into plain values; a chunk that is refused has changed nothing by then, but
// for one of the old layout without a version, which leaves fresh graphs. The values go into the fields under the gate.
// Outside of it, since hosts have locks of their own, everybody hears of them in a fixed order that editors and hosts
// know: the effect's own parameters, the host's automation, the graphs, the window.
#include "effect/LfoDSP.h"
#include "effect/ParameterTable.h"
#include "model/StateFields.h"

using namespace model;

namespace {

constexpr float kFirstFilterTypes = 0.98f;  // version: before it the filter's switch chose the type
constexpr float kFirstWindowSize = 1.21f;
constexpr float kLastOfFixedOrder = 1.24f;  // what came into the state with a later version is told behind the rest
constexpr VstInt32 kRefused = -1;

// --- The fields that no parameter's row keeps, one way or the other

template <class T>
void copyCell(T& to, const Shared<T>& from) noexcept {
  to = from;
}

template <class T>
void copyCell(Shared<T>& to, const T& from) noexcept {
  to = from;
}

template <class To, class From, std::size_t N>
void copyCell(std::array<To, N>& to, const std::array<From, N>& from) noexcept {
  for (std::size_t i = 0; i < N; ++i) copyCell(to[i], from[i]);
}

// All but the points, which lie in another order here and there.
template <class State, class Effect, class Copy>
void pairOtherFields(State& state, Effect& effect, Copy copy) noexcept {
  auto& lfo = effect.padLFO;
  copy(state.bLfoOpen, lfo.bLfoOpen);
  copy(state.graphOut, lfo.graphOut);
  copy(state.cyclePos, lfo.cyclePos);
  copy(state.reserved1, lfo.reserved1);
  copy(state.reserved100, lfo.reserved100);
  copy(state.reserved132, lfo.reserved132);
  copy(state.reserved136, lfo.reserved136);
  copy(state.reserved148, lfo.reserved148);
  copy(state.reserved162, lfo.reserved162);
  copy(state.reserved164, lfo.reserved164);
  copy(state.reserved169, lfo.reserved169);
  copy(state.bOneShot, effect.bOneShot);  // the second field of "In>Rerig"
  copy(state.editorWidth, effect.editorWidth);
  copy(state.editorHeight, effect.editorHeight);
}

std::span<const std::byte> bytesOf(const void* data, VstInt32 size) noexcept {
  if (!data || size <= 0) return {};
  return {static_cast<const std::byte*>(data), static_cast<std::size_t>(size)};
}

}  // namespace

// --- Saving

model::State LfoDSP::snapshot() const noexcept {
  model::State state;
  for (const effect::ParameterRow& row : effect::parameterRows())
    if (row.stored) row.stored->put(state, row.index - row.stored->parameter, row.load(*this, row.index));
  pairOtherFields(state, *this, [](auto& stored, const auto& live) { copyCell(stored, live); });
  for (int g = 0; g < kGraphs; ++g) model::setPoints(state, g, pointsOf(g));
  return state;
}

VstInt32 LfoDSP::getChunk(void** data, bool /*isPreset*/) {
  if (!data) return 0;
  auto fresh = std::make_unique<ChunkBuffer>(model::writeChunk(snapshot()));
  const std::lock_guard lock(chunkLock_);
  chunk_ = std::move(fresh);
  *data = chunk_->data();
  return static_cast<VstInt32>(chunk_->size());
}

// --- Loading

void LfoDSP::takeState(const model::State& state) noexcept {
  for (const effect::ParameterRow& row : effect::parameterRows())
    if (row.stored) row.store(*this, row.index, row.stored->get(state, row.index - row.stored->parameter));
  pairOtherFields(state, *this, [](const auto& stored, auto& live) { copyCell(live, stored); });
  for (int g = 0; g < kGraphs; ++g) {
    setPoints(g, model::pointsOf(state, g), kGraphSlots);
    setWarp(g, state.graphWarp[static_cast<std::size_t>(g)]);
  }
}

// A preset leaves a locked controller alone, a project does not; the timing stays under the lock for both.
model::Locks LfoDSP::locksFor(bool isPreset) const noexcept { return {isPreset && bCCLock, bCCLock}; }

void LfoDSP::repeatParameters(std::initializer_list<VstInt32> indices) {
  for (const VstInt32 index : indices) setParameter(index, getParameter(index));
}

// The stored byte counts to 128, which the signed field keeps as -128.
void LfoDSP::repeatController(const model::Locks& locks) {
  if (locks.controller) return;
  setParameter(kCcNumber, effect::valueOfController(static_cast<std::uint8_t>(ccNumber)));
}

void LfoDSP::automateFirst(VstInt32 count) {
  for (VstInt32 index = 0; index < count; ++index) setParameterAutomated(index, getParameter(index));
}

void LfoDSP::repeatLaterParameters() {
  for (const effect::ParameterRow& row : effect::parameterRows())
    if (row.stored && row.stored->now.since > kLastOfFixedOrder) repeatParameters({row.index});
}

// The effect always comes back with the first graph on show.
void LfoDSP::announceGraphs() {
  setParameter(kNoticeGraph, 0.0f);
  RenderEnvsInCaseGUIClosed(false);
  setParameter(kCurrentGraph, 0.0f);
}

void LfoDSP::announceCurrent(const model::LoadedState& loaded, const model::Locks& locks) {
  const bool splitSwitch = loaded.version < kFirstFilterTypes;
  if (splitSwitch) repeatParameters({kFilterType});
  if (splitSwitch && loaded.state.filterOn >= 1.0f) repeatParameters({kFilterMix, kFilterVar});
  setParameter(kNoticeScope, bScopeOn ? 1.0f : 0.0f);
  repeatParameters({kFilterOn, kXoverFrequency, kXoverInvert, kXoverOn, kNoteToCutoff});
  repeatController(locks);
  repeatParameters({kRouteCut, kRouteRes, kRouteVol, kRoutePan, kRouteVar, kGridSize, kAnchor});
  if (!splitSwitch) {
    repeatParameters({kFilterType});
    setParameter(kNoticeFilterType, 1.0f);
    repeatParameters({kFilterMix, kFilterVar});
  }
  repeatLaterParameters();
  automateFirst(kPoint1);
  announceGraphs();
  repeatParameters({kRetrigger});
  if (AEffEditor* const e = getEditor(); e && loaded.version >= kFirstWindowSize)
    e->setParameter(kNoticeEditorSize, kNoticeEditorSizeValue);
  setParameter(kNoticePresetTitle, 1.0f);
}

// All that blocks read changes under the gate, so that the next one plays the new state whole. A fresh one-shot rests
// on the end of the new graphs, so the switch comes after their rendering.
void LfoDSP::takeStateWhole(const model::State& loaded) {
  model::State state = loaded;
  state.bOneShot = false;
  takeState(state);
  RenderEnvsInCaseGUIClosed(false);
  const float trigger = loaded.bRetrig ? 0.5f : 0.0f;
  LfoDSP::setParameter(kRetrigger, loaded.bOneShot ? 1.0f : trigger);
  padLFO.bLfoOpen = !bGateMode;
}

VstInt32 LfoDSP::setChunk(void* data, VstInt32 byteSize, bool isPreset) {
  const auto bytes = bytesOf(data, byteSize);
  if (!model::hasCurrentSize(bytes.size())) return setChunk_Old(data, byteSize, isPreset);
  const model::Locks locks = locksFor(isPreset);
  model::ChunkReading reading;
  {
    const AudioGate::Hold hold(gate);
    reading = model::readChunk(model::Layout::current, bytes, snapshot(), locks);
    takeStateWhole(std::get<model::LoadedState>(reading).state);  // a chunk of this size is never refused
  }
  announceCurrent(std::get<model::LoadedState>(reading), locks);
  return 0;
}

// --- The layout before today's

void LfoDSP::resetGraphs() noexcept {
  for (int g = 0; g < kGraphs; ++g) initEnv(g);
  RenderEnvsInCaseGUIClosed(false);
}

void LfoDSP::announceOld(const model::Locks& locks) {
  repeatController(locks);
  repeatParameters({kRouteCut, kRouteRes, kRouteVol, kRoutePan, kGridSize, kAnchor, kFilterType});
  setParameter(kNoticeFilterType, 1.0f);
  automateFirst(kHostParameters);
  announceGraphs();
}

VstInt32 LfoDSP::setChunk_Old(void* data, VstInt32 byteSize, bool isPreset) {
  const model::Locks locks = locksFor(isPreset);
  model::ChunkReading reading;
  {
    const AudioGate::Hold hold(gate);
    reading = model::readChunk(model::Layout::old, bytesOf(data, byteSize), snapshot(), locks);
    if (const auto* const loaded = std::get_if<model::LoadedState>(&reading)) {
      takeState(loaded->state);
      RenderEnvsInCaseGUIClosed(false);
    } else if (std::get<model::Refusal>(reading) == model::Refusal::noVersion) {
      resetGraphs();
    }
  }
  if (std::holds_alternative<model::LoadedState>(reading)) {
    announceOld(locks);
    return 0;
  }
  return std::get<model::Refusal>(reading) == model::Refusal::empty ? 0 : kRefused;
}
