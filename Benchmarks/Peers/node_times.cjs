// node_times.cjs ENGINE TASK FILE RUNS THREADS: as OurTimes, for the engines "duckdb" and "polars".
//
// Both read FILE itself, which is in the system's cache, and write to a file in memory.
"use strict";
const fs = require("fs");

const [engine, task, file, runs, threads] = process.argv.slice(2);
const output = `/dev/shm/layerdata-peers-${process.pid}`;

async function duckdb() {
  const { DuckDBInstance } = require("@duckdb/node-api");
  const instance = await DuckDBInstance.create(":memory:", { threads });
  const connection = await instance.connect();
  const create = (reader) => connection.run(`CREATE TABLE t AS SELECT * FROM ${reader}`);
  const readCsv = () => create(`read_csv('${file}')`);
  if (task.endsWith("write")) await readCsv();
  const run = {
    "csv-read": readCsv,
    "json-read": () => create(`read_json_auto('${file}', maximum_object_size=67108864)`),
    "csv-write": () => connection.run(`COPY t TO '${output}' (FORMAT CSV, HEADER)`),
    "json-write": () => connection.run(`COPY t TO '${output}' (FORMAT JSON, ARRAY true)`),
  }[task];
  return { run, end: () => task.endsWith("read") && connection.run("DROP TABLE t") };
}

async function polars() {
  const pl = require("nodejs-polars");
  const readCsv = () => pl.readCSV(file, { tryParseDates: true, numThreads: Number(threads) });
  let table = task.endsWith("write") ? readCsv() : null;
  const run = {
    "csv-read": () => { table = readCsv(); },
    "json-read": () => { table = pl.readJSON(file, { format: "json" }); },
    "csv-write": () => table.writeCSV(output),
    "json-write": () => table.writeJSON(output, { format: "json" }),
  }[task];
  return { run, end: () => { if (task.endsWith("read")) table = null; } };
}

(async () => {
  const { run, end } = await { duckdb, polars }[engine]();
  for (let i = 0; i < Number(runs); ++i) {
    global.gc();
    const start = process.hrtime.bigint();
    await run();
    console.log((Number(process.hrtime.bigint() - start) / 1e6).toFixed(2));
    await end();
    fs.rmSync(output, { force: true });
  }
  process.exit(0);
})();
