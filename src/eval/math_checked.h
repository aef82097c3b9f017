#pragma once
// The runtime's elementary functions with its errors: a square root or a
// logarithm outside its domain is an invalid call, a division by zero and an
// overflowing result are errors of their own.
namespace kx {

double Sqr(double x);
double Log(double x);
double Exp(double x);
double Atn(double x);
int Sgn(double x);
double Quotient(double x, double y);

// The degree factors, kept as the library has always written them.
inline constexpr double kDegreesToRadians = 0.0174532925199433;
inline constexpr double kRadiansToDegrees = 57.2957795130823;

double ArcSin(double x);
double ArcCos(double x);

}  // namespace kx
