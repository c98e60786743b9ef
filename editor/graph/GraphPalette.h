// SPDX-License-Identifier: MIT
// The colours of the editor, by name: red, green, blue, alpha. A colour with several shades is an array of three.
#pragma once

#include <array>

#include "toolkit/base/CColor.h"

inline constexpr VSTGUI::CColor MyFontColor{244, 244, 244, 255};
inline constexpr VSTGUI::CColor GreyFontColor{128, 128, 128, 255};
inline constexpr VSTGUI::CColor PositionBar{32, 96, 198, 128};
inline constexpr VSTGUI::CColor BgLinesBright{58, 58, 62, 128};
inline constexpr VSTGUI::CColor BlueFaderDot{0, 114, 179, 255};
inline constexpr VSTGUI::CColor BlueFaderLine{0, 152, 239, 255};
inline constexpr VSTGUI::CColor LFOPointHoverBorderFill{136, 209, 255, 77};
inline constexpr VSTGUI::CColor BgLinesDark{202, 222, 255, 12};
inline constexpr VSTGUI::CColor LFOBgLinesBright{202, 222, 255, 24};
inline constexpr std::array<VSTGUI::CColor, 3> TransFillColor = {
    {{0, 64, 128, 44}, {0, 64, 128, 44}, {0, 64, 128, 44}}};
inline constexpr std::array<VSTGUI::CColor, 3> MatrixSliderBorders = {
    {{48, 52, 57, 255}, {15, 19, 21, 255}, {23, 26, 28, 255}}};
inline constexpr VSTGUI::CColor MatrixSliderFill{16, 29, 31, 255};
inline constexpr VSTGUI::CColor LFO_LoopPointColor{154, 125, 64, 64};
inline constexpr VSTGUI::CColor ScopeWaveFormLight{192, 192, 192, 64};
inline constexpr VSTGUI::CColor ScopeWaveFormDark{128, 255, 255, 255};
inline constexpr VSTGUI::CColor SuperFaintEnv{16, 32, 48, 255};
inline constexpr VSTGUI::CColor SuperFaintFill{0, 64, 128, 128};
inline constexpr VSTGUI::CColor KnobShadHandle{255, 255, 255, 0};
inline constexpr VSTGUI::CColor BackgroundFrameColor{24, 24, 24, 255};
inline constexpr VSTGUI::CColor BackgroundPanelColor{32, 32, 32, 255};
inline constexpr VSTGUI::CColor MouseTargetCornersColor{0, 152, 239, 255};
inline constexpr VSTGUI::CColor WaveformMouseOverFill{192, 192, 192, 32};
inline constexpr VSTGUI::CColor LFOPoints{103, 174, 250, 255};
inline constexpr VSTGUI::CColor LFOPositionBar{32, 96, 198, 128};
inline constexpr VSTGUI::CColor LFOLineColor{1, 158, 242, 255};
inline constexpr VSTGUI::CColor LFOWaveLinesGreyColor{16, 32, 48, 255};
inline constexpr VSTGUI::CColor LFO_BG_G1{0, 45, 76, 77};
inline constexpr VSTGUI::CColor LFO_BG_G2{0, 162, 255, 77};
inline constexpr VSTGUI::CColor LFOBGColor{21, 21, 21, 255};
inline constexpr VSTGUI::CColor LFOWaveFillColor{0, 64, 128, 128};
inline constexpr std::array<VSTGUI::CColor, 3> EnvBorderColor = {
    {{1, 158, 242, 255}, {179, 114, 0, 255}, {128, 128, 128, 255}}};
inline constexpr std::array<VSTGUI::CColor, 3> Env_BG_ColorG1 = {{{0, 45, 76, 77}, {62, 88, 0, 77}, {44, 44, 44, 77}}};
inline constexpr std::array<VSTGUI::CColor, 3> Env_BG_ColorG2 = {
    {{0, 162, 255, 77}, {143, 100, 0, 77}, {102, 102, 102, 77}}};
inline constexpr std::array<VSTGUI::CColor, 3> EnvFillColor = {{{0, 64, 128, 44}, {128, 64, 0, 44}, {96, 96, 96, 44}}};
inline constexpr std::array<VSTGUI::CColor, 3> EnvFillFaintColor = {
    {{249, 1, 67, 11}, {179, 114, 0, 11}, {128, 128, 128, 11}}};
inline constexpr std::array<VSTGUI::CColor, 3> EnvBorderFaintColor = {
    {{249, 1, 67, 35}, {154, 125, 64, 64}, {154, 154, 154, 64}}};
inline constexpr VSTGUI::CColor EnvPointFillColor{250, 103, 142, 255};
inline constexpr VSTGUI::CColor VectorControlRangeFill{26, 41, 50, 255};
inline constexpr VSTGUI::CColor VectorControlRangeStroke{23, 38, 47, 255};
inline constexpr VSTGUI::CColor KnobCoronaColor{200, 20, 41, 255};
inline constexpr VSTGUI::CColor KnobHandleColor{160, 160, 160, 255};
inline constexpr VSTGUI::CColor KnobHandleDarkKnobColor{81, 81, 81, 255};
inline constexpr VSTGUI::CColor ModulatorCColor{43, 119, 185, 255};
inline constexpr VSTGUI::CColor WVF_BackColor{33, 33, 33, 255};
inline constexpr VSTGUI::CColor WVF_ZeroLineColor{54, 54, 54, 128};
inline constexpr VSTGUI::CColor WVF_ZeroLineColor_Filter{51, 54, 60, 255};
inline constexpr VSTGUI::CColor WVF_FreqPlotLinesColor{65, 65, 65, 255};
inline constexpr VSTGUI::CColor WVF_FreqPlotLinesFaintColor{34, 34, 34, 255};
inline constexpr VSTGUI::CColor ScrollBGColor{55, 55, 55, 255};
inline constexpr VSTGUI::CColor ScrollBarColor{155, 155, 155, 255};
inline constexpr VSTGUI::CColor VeloHiliter{92, 255, 135, 255};
inline constexpr VSTGUI::CColor VeloHiliterTrans{92, 255, 135, 127};
inline constexpr VSTGUI::CColor VeloHiliterDark{38, 87, 74, 255};
inline constexpr std::array<VSTGUI::CColor, 3> WVF_WavePlotColor = {
    {{88, 88, 88, 100}, {1, 158, 242, 255}, {92, 255, 135, 255}}};
inline constexpr std::array<VSTGUI::CColor, 3> WVF_WavePlotColorG1 = {
    {{44, 44, 44, 100}, {0, 162, 255, 77}, {38, 87, 74, 255}}};
inline constexpr std::array<VSTGUI::CColor, 3> WVF_WavePlotColorG2 = {
    {{66, 66, 66, 100}, {0, 45, 76, 77}, {92, 255, 135, 127}}};
inline constexpr VSTGUI::CColor DragSrcTabSelectedColor{220, 223, 226, 255};
inline constexpr VSTGUI::CColor MainPanelBGColor{220, 223, 226, 255};
inline constexpr VSTGUI::CColor FX_ScrollBarBGColor{157, 157, 157, 255};
inline constexpr VSTGUI::CColor FX_ScrollBarHndlColor{78, 78, 78, 255};

namespace editor {

inline constexpr std::size_t kWeightColors = 586;

// Colours of selected points by their weight, from that of a point that stands still to that of one that goes all the
// way: LFOPoints blue over a pale sky to a warm white.
[[nodiscard]] std::array<VSTGUI::CColor, kWeightColors> weightRamp() noexcept;

}  // namespace editor
