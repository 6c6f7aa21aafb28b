// Matrix product and point transform, compared with other libraries in double precision.
#include "geometry/Geometry.h"

#include <Eigen/Dense>
#include <benchmark/benchmark.h>
#include <glm/glm.hpp>

#include <vector>

namespace {

constexpr std::size_t kCount = 64;  // fits into the first-level cache

double sample(std::size_t i) { return 0.01 * static_cast<double>(i * 7919 % 1000) - 5.0; }

using EigenMatrix = Eigen::Matrix<double, 4, 4, Eigen::RowMajor>;

template <class Matrix, class Set>
std::vector<Matrix> matrices(Set set) {
  std::vector<Matrix> result(kCount);
  for (std::size_t i = 0; i < kCount; ++i) {
    for (int row = 0; row < 4; ++row) {
      for (int column = 0; column < 4; ++column) {
        set(result[i], row, column, sample(i * 16 + static_cast<std::size_t>(row * 4 + column)));
      }
    }
  }
  return result;
}

std::vector<CMatrix4D> ourMatrices() {
  return matrices<CMatrix4D>([](CMatrix4D& m, int r, int c, double v) { m.m[r][c] = v; });
}

std::vector<EigenMatrix> eigenMatrices() {
  return matrices<EigenMatrix>([](EigenMatrix& m, int r, int c, double v) { m(r, c) = v; });
}

std::vector<glm::dmat4> glmMatrices() {
  return matrices<glm::dmat4>([](glm::dmat4& m, int r, int c, double v) { m[c][r] = v; });
}

// Multiplies each matrix by the next one and keeps the results, so that the compiler must compute
// every element.
template <class Matrix>
void multiply(benchmark::State& state, const std::vector<Matrix>& in) {
  std::vector<Matrix> out(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) out[i] = in[i] * in[(i + 1) % kCount];
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

void MatrixProductOurs(benchmark::State& state) { multiply(state, ourMatrices()); }
void MatrixProductEigen(benchmark::State& state) { multiply(state, eigenMatrices()); }
void MatrixProductGlm(benchmark::State& state) { multiply(state, glmMatrices()); }

BENCHMARK(MatrixProductOurs);
BENCHMARK(MatrixProductEigen);
BENCHMARK(MatrixProductGlm);

// Transforms many points by one matrix; `apply` returns the transformed point.
template <class Matrix, class Point, class Apply>
void transform(benchmark::State& state, Matrix matrix, Apply apply) {
  std::vector<Point> in;
  for (std::size_t i = 0; i < kCount; ++i) {
    in.emplace_back(sample(3 * i), sample(3 * i + 1), sample(3 * i + 2));
  }
  std::vector<Point> out(in);
  for (auto _ : state) {
    benchmark::DoNotOptimize(matrix);
    for (std::size_t i = 0; i < kCount; ++i) out[i] = apply(matrix, in[i]);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

void PointTransformOurs(benchmark::State& state) {
  transform<CMatrix4D, CPoint3D>(state, ourMatrices()[1],
                                 [](const CMatrix4D& m, const CPoint3D& p) { return m * p; });
}

struct EigenTransform {
  Eigen::Matrix3d linear;
  Eigen::Vector3d translation;
};

void PointTransformEigen(benchmark::State& state) {
  const EigenMatrix matrix = eigenMatrices()[1];
  const EigenTransform affine = {matrix.topLeftCorner<3, 3>(), matrix.topRightCorner<3, 1>()};
  transform<EigenTransform, Eigen::Vector3d>(
      state, affine, [](const EigenTransform& t, const Eigen::Vector3d& p) -> Eigen::Vector3d {
        return t.linear.lazyProduct(p) + t.translation;
      });
}

void PointTransformGlm(benchmark::State& state) {
  transform<glm::dmat4, glm::dvec3>(
      state, glmMatrices()[1],
      [](const glm::dmat4& m, const glm::dvec3& p) { return glm::dvec3(m * glm::dvec4(p, 1.0)); });
}

BENCHMARK(PointTransformOurs);
BENCHMARK(PointTransformEigen);
BENCHMARK(PointTransformGlm);

}  // namespace
