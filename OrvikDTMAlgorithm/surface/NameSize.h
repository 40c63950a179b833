// The size of every name in the records and in a surface: at most 23 bytes of text and zeros behind them.
#pragma once

inline namespace OrvikDTM {

inline constexpr int kNameSize = 24;

}  // namespace OrvikDTM
