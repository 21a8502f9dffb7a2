import { defineConfig } from "vitest/config";

// Runs the built page in a real browser against a real server, one file after the other.
export default defineConfig({
  test: { include: ["e2e/**/*.e2e.ts"], environment: "node", fileParallelism: false, testTimeout: 60_000, hookTimeout: 120_000 },
});
