import { defineConfig } from "vitest/config";

// Measures the grid; what it finds is printed, not judged.
export default defineConfig({ test: { include: ["tools/grid-times.ts"], environment: "node", testTimeout: 900_000, hookTimeout: 120_000, disableConsoleIntercept: true } });
